// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace vantor::CpuDetect {

/// What the `uname` command prints, composed from sysctl keys. Any thread.
class UnameReimplemented {
public:
    UnameReimplemented() = delete;

    /// The five fields.
    struct UTSNameReimplemented {
        std::string sysname;  ///< kern.ostype
        std::string nodename; ///< kern.hostname
        std::string release;  ///< kern.osrelease
        std::string version;  ///< kern.version
        std::string machine;  ///< hw.machine

        bool operator==(const UTSNameReimplemented&) const = default;
        [[nodiscard]] std::string description() const;
        friend std::ostream& operator<<(std::ostream& out, const UTSNameReimplemented& names);

        /// The fields as they were fetched last, or afresh where that is wanted or none were. Absent where
        /// one of them cannot be read: one error line names it, and what was fetched before is kept.
        [[nodiscard]] static std::optional<UTSNameReimplemented> fromSysctl(bool forceNewFetch = false);
    };

    /// An option letter of the command, and its longer name.
    enum class UnameCommandLineArgs : std::uint8_t {
        a, ///< all of `allEquivalent`
        m, ///< machine
        n, ///< nodename
        p, ///< "i386", "arm" or "powerpc"; "unknown" where it is not detected
        s, ///< sysname
        r, ///< release
        v, ///< version
        All = a,
        machineHardwareName = m,
        nodeName = n,
        genericProcessorType = p,
        defaultArg = s,
        operatingSystemKernelReleaseNumber = r,
        operatingSystemKernelVersionString = v
    };
    /// The letter.
    friend std::ostream& operator<<(std::ostream& out, UnameCommandLineArgs letter);

    using Letters = std::vector<UnameCommandLineArgs>;
    using Dictionary = std::map<UnameCommandLineArgs, std::string>;

    /// What `a` stands for: s, n, r, v, m. The processor word is not part of it.
    [[nodiscard]] static const Letters& allEquivalent();

    /// The selected fields: a `Dictionary` by letter, or (`uname<std::string>`) one line of them joined by
    /// blanks, in the caller's order, each letter once. No letter at all is the system name, as the command
    /// has it. Absent where a field cannot be read.
    template<class Result = std::string>
    [[nodiscard]] static std::optional<Result> uname(const Letters& withCommandLineArgs,
                                                     bool forceNewFetch = false) {
        static_assert(std::is_same_v<Result, std::string> || std::is_same_v<Result, Dictionary>,
                      "uname gives a std::string or a UnameReimplemented::Dictionary");
        if constexpr (std::is_same_v<Result, Dictionary>) {
            return dictionary(withCommandLineArgs, forceNewFetch);
        } else {
            return line(withCommandLineArgs, forceNewFetch);
        }
    }

private:
    static std::optional<Dictionary> dictionary(const Letters& letters, bool forceNewFetch);
    static std::optional<std::string> line(const Letters& letters, bool forceNewFetch);
};

} // namespace vantor::CpuDetect
