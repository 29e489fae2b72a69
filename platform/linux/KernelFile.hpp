// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux_machine {

/// An open descriptor, closed at the end.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : m_number(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    int release();
    void reset();

private:
    int m_number = -1;
};

/// The English text of an error number: the reasons that hosts show are in one language throughout.
[[nodiscard]] std::string errorText(int error);

/// Makes a call again that a signal interrupted (EINTR): a few times, so that no storm of signals keeps a
/// reader forever. `call` gives a negative number where it fails.
template<class Call>
[[nodiscard]] auto uninterrupted(const Call& call) {
    constexpr int attempts = 64;
    auto result = call();
    for (int i = 1; i < attempts && result < 0 && errno == EINTR; ++i) {
        result = call();
    }
    return result;
}

/// How the kernel makes a file's text. Under /proc a read at offset zero formats the text anew. Where the
/// whole text is one record, one call brings all of it; where it is one record an entry, a call ends between
/// two entries and only an empty answer is the end.
enum class Shape { oneRecord, manyRecords };

/// A file of kernel text that is read again and again. On procfs and sysfs the descriptor stays open and a
/// read is a pread from the start, which saves the path walk; a descriptor that went stale (the device is
/// gone, the process changed its view) is opened anew, once. Elsewhere (a captured tree) the path is opened
/// for each read, because a file there may be replaced. Not for several threads at once.
class KernelFile {
public:
    /// Longer texts are refused: 65,536 interfaces fit.
    static constexpr std::size_t longest = std::size_t{16} << 20;

    KernelFile(std::string path, Shape shape) : m_path(std::move(path)), m_shape(shape) {}

    struct Content {
        std::string_view text; ///< valid until the next read
        int error = 0;         ///< an errno value; then there is no text
    };
    /// The text's first `wanted` bytes, or all of it where it is shorter.
    [[nodiscard]] Content read(std::size_t wanted = longest);

    [[nodiscard]] const std::string& path() const { return m_path; }
    /// "path: what is wrong", for a failure's reason.
    [[nodiscard]] std::string reason(int error) const { return m_path + ": " + errorText(error); }

private:
    int open();
    int fill(std::size_t wanted);
    [[nodiscard]] bool isWhole() const;

    std::string m_path;
    Shape m_shape;
    Descriptor m_descriptor;
    bool m_keep = false;
    std::vector<char> m_buffer;
    std::size_t m_length = 0;
    std::size_t m_whole = 0; ///< the length of the last text that was read to its end
};

} // namespace vantor::platform::linux_machine
