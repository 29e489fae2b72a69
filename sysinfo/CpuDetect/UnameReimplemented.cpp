// SPDX-License-Identifier: MIT
#include "sysinfo/CpuDetect/UnameReimplemented.hpp"

#include "sysinfo/CpuDetect/CpuArchitecture.hpp"
#include "sysinfo/CpuDetect/Printer.hpp"
#include "sysinfo/SystemValues/PerMachine.hpp"
#include "sysinfo/SystemValues/Sysctl.hpp"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace vantor::CpuDetect {

namespace {

using Record = UnameReimplemented::UTSNameReimplemented;
using Letter = UnameReimplemented::UnameCommandLineArgs;
using Letters = UnameReimplemented::Letters;
using SystemValues::Sysctl;

constinit SystemValues::PerMachine<Record> lastFetched;

/// In place of `a`, its letters; else each letter where it comes first.
Letters normalised(const Letters& letters) {
    if (std::ranges::find(letters, Letter::a) != letters.end()) {
        return UnameReimplemented::allEquivalent();
    }
    if (letters.empty()) {
        return {Letter::defaultArg};
    }
    Letters result;
    for (const Letter letter : letters) {
        if (std::ranges::find(result, letter) == result.end()) {
            result.push_back(letter);
        }
    }
    return result;
}

std::string processorWord() {
    const std::optional<CpuArchitecture> architecture = CpuArchitecture::machineCurrent();
    if (!architecture) {
        return "unknown"; // the command's own word
    }
    return architecture->isIntel() ? "i386" : architecture->isArm() ? "arm" : "powerpc";
}

std::string field(const Record& record, Letter letter) {
    switch (letter) {
    case Letter::m:
        return record.machine;
    case Letter::n:
        return record.nodename;
    case Letter::p:
        return processorWord();
    case Letter::r:
        return record.release;
    case Letter::v:
        return record.version;
    case Letter::a: // never left after `normalised`
    case Letter::s:
        break;
    }
    return record.sysname;
}

} // namespace

std::string UnameReimplemented::UTSNameReimplemented::description() const {
    const auto quoted = [](std::string_view text) { return "\"" + std::string(text) + "\""; };
    return "UTSNameReimplemented(sysname: " + quoted(sysname) + ", nodename: " + quoted(nodename) +
           ", release: " + quoted(release) + ", version: " + quoted(version) +
           ", machine: " + quoted(machine) + ")";
}

std::ostream& operator<<(std::ostream& out, const Record& names) {
    return out << names.description();
}

std::ostream& operator<<(std::ostream& out, Letter letter) {
    return out << "amnpsrv"[static_cast<std::size_t>(letter)];
}

std::optional<Record> UnameReimplemented::UTSNameReimplemented::fromSysctl(bool forceNewFetch) {
    if (!forceNewFetch) {
        if (std::optional<Record> known = lastFetched.value()) {
            return known;
        }
    }
    struct Source {
        std::string_view name;
        std::string Record::*field;
        std::optional<std::string> (*read)();
    };
    constexpr Source sources[] = {{"sysname", &Record::sysname, Sysctl::Kern::ostype},
                                  {"nodename", &Record::nodename, Sysctl::Kern::hostname},
                                  {"release", &Record::release, Sysctl::Kern::osrelease},
                                  {"version", &Record::version, Sysctl::Kern::version},
                                  {"machine", &Record::machine, Sysctl::HW::machine}};
    Record record;
    for (const Source& source : sources) {
        std::optional<std::string> value = source.read();
        if (!value) {
            Printer::errorPrint("Can't get the " + std::string(source.name) + " data for uname");
            return std::nullopt;
        }
        record.*source.field = *std::move(value);
    }
    lastFetched.keep(record);
    Printer::print("uname data is: " + record.description());
    return record;
}

const Letters& UnameReimplemented::allEquivalent() {
    // Never destroyed: a thread may still ask while the process ends.
    static const auto& letters = *new Letters{Letter::s, Letter::n, Letter::r, Letter::v, Letter::m};
    return letters;
}

std::optional<UnameReimplemented::Dictionary> UnameReimplemented::dictionary(const Letters& letters,
                                                                             bool forceNewFetch) {
    const std::optional<Record> record = Record::fromSysctl(forceNewFetch);
    if (!record) {
        return std::nullopt;
    }
    Dictionary result;
    for (const Letter letter : normalised(letters)) {
        result.emplace(letter, field(*record, letter));
    }
    Printer::print("Obtained uname dictionary: " + PackagesBase::description(result));
    return result;
}

std::optional<std::string> UnameReimplemented::line(const Letters& letters, bool forceNewFetch) {
    const std::optional<Dictionary> fields = dictionary(letters, forceNewFetch);
    if (!fields) {
        return std::nullopt;
    }
    std::string result;
    for (const Letter letter : normalised(letters)) {
        if (const auto found = fields->find(letter); found != fields->end()) {
            result.append(" ").append(found->second);
        }
    }
    return result.substr(std::min<std::size_t>(1, result.size()));
}

} // namespace vantor::CpuDetect
