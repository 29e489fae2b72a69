// SPDX-License-Identifier: MIT
#include "platform/core/PrintableText.hpp"
#include "sysinfo/program/Report.hpp"

#include <algorithm>
#include <utility>

namespace vantor::sysinfo {

namespace {

constexpr std::size_t captionWidth = 18;
constexpr std::size_t columnWidth = 14;
constexpr std::size_t longestText = 96; // one line of a wide terminal

/// The columns of a line as people see them: bytes that continue a character take no room.
std::string padded(std::string text, std::size_t width) {
    const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
    const auto shown = text.size() - static_cast<std::size_t>(std::ranges::count_if(text, continues));
    return text.append(shown < width ? width - shown : 1, ' ');
}

/// A heading and its lines; left out where it has none.
class Section {
public:
    explicit Section(std::string heading) : m_heading(std::move(heading)) {}

    void line(const std::string& caption, const std::string& text) {
        m_lines += "  " + padded(caption, captionWidth) + text + "\n";
    }
    void line(const std::string& caption, const Text& text) {
        if (text && !text->empty()) {
            line(caption, platform::printableText(*text, longestText));
        }
    }
    void appendTo(std::string& page) const {
        if (!m_lines.empty()) {
            page += (page.empty() ? "" : "\n") + m_heading + "\n" + m_lines;
        }
    }

private:
    std::string m_heading;
    std::string m_lines;
};

std::string bytes(Count count) {
    return count ? CpuDetect::byteSizeText(*count) : "-";
}

/// "4", or "3 of 4" where some are offline.
std::string counted(Count online, Count inAll) {
    if (!online) {
        return "-";
    }
    const std::string shown = std::to_string(*online);
    return inAll && *inAll != *online ? shown + " of " + std::to_string(*inAll) : shown;
}

Section machineSection(const Report& report) {
    Section section("Machine");
    section.line("Name", report.hostname);
    section.line("Model", report.model);
    section.line("Architecture", report.architecture);
    return section;
}

Section processorSection(const Report& report) {
    Section section("Processor");
    if (report.processor) {
        const std::size_t start =
            std::min(report.processor->find_first_not_of(' '), report.processor->size());
        section.line("Name", Text(report.processor->substr(start)));
    }
    if (report.family && report.number && report.stepping) {
        section.line("Family", std::to_string(*report.family) + ", model " + std::to_string(*report.number) +
                                   ", stepping " + std::to_string(*report.stepping));
    }
    if (report.cores) {
        section.line("Cores", counted(report.cores, report.coresInAll));
    }
    if (report.threads) {
        section.line("Threads", counted(report.threads, report.threadsInAll));
    }
    if (report.threadSlots && report.threadSlots != report.threadsInAll) {
        section.line("Room for", std::to_string(*report.threadSlots) + " threads");
    }
    section.line("Word size", std::string(report.is64Bit ? "64 bits" : "32 bits"));
    return section;
}

std::string levelName(std::size_t index, std::size_t count) {
    return index == 0                 ? "Performance"
           : index == 1 && count == 2 ? "Efficiency"
                                      : "Level " + std::to_string(index);
}

/// One column a level; a row that no level knows is left out. A machine with one kind of core has shown its
/// counts already.
Section levelSection(const std::vector<CoreLevel>& levels) {
    const bool several = levels.size() > 1;
    std::string heading = several ? padded("Cores and caches", captionWidth + 2) : "Caches";
    for (std::size_t i = 0; several && i < levels.size(); ++i) {
        heading += padded(levelName(i, levels.size()), columnWidth);
    }
    heading.erase(heading.find_last_not_of(' ') + 1);
    Section section(heading);
    const auto row = [&](const std::string& caption, const auto& shown) {
        std::string cells;
        bool known = false;
        for (const CoreLevel& level : levels) {
            const std::string cell = shown(level);
            known = known || cell != "-";
            cells += padded(cell, columnWidth);
        }
        cells.erase(cells.find_last_not_of(' ') + 1);
        if (known) {
            section.line(caption, cells);
        }
    };
    if (several) {
        row("Cores", [](const CoreLevel& each) { return counted(each.cores, each.coresInAll); });
        row("Threads", [](const CoreLevel& each) { return counted(each.threads, each.threadsInAll); });
    }
    row("L1 instructions", [](const CoreLevel& each) { return bytes(each.l1Instruction); });
    row("L1 data", [](const CoreLevel& each) { return bytes(each.l1Data); });
    row("L2", [](const CoreLevel& each) { return bytes(each.l2); });
    row("Threads per L2", [](const CoreLevel& each) { return counted(each.threadsPerL2, std::nullopt); });
    return section;
}

Section memorySection(const Report& report) {
    Section section("Memory");
    if (report.memory) {
        section.line("Installed", bytes(report.memory));
    }
    if (report.pageSize) {
        section.line("Page", bytes(report.pageSize));
    }
    return section;
}

Section gpuSection(const Report& report) {
    Section section("Graphics");
    if (report.gpu) {
        section.line("Name", Text(report.gpu->name));
        if (report.gpu->vram != 0) { // 0: the driver does not tell
            section.line("Memory",
                         bytes(report.gpu->vram) + (report.gpu->hasUnifiedMemory ? " (Unified)" : ""));
        }
    } else if (report.gpuAsked) {
        section.line("Device", std::string("none found"));
    }
    return section;
}

Section systemSection(const Report& report) {
    Section section("System");
    section.line("Kernel", report.systemType && report.release
                               ? Text(*report.systemType + " " + *report.release)
                               : report.release);
    section.line("Kernel build", report.version);
    section.line("System version", report.productVersion);
    section.line("System build", report.build);
    section.line("Release type", report.releaseType);
    section.line("Boot arguments", report.bootArguments);
    return section;
}

} // namespace

std::string pageOf(const Report& report) {
    std::string page;
    for (const Section& section :
         {machineSection(report), processorSection(report), levelSection(report.levels),
          memorySection(report), gpuSection(report), systemSection(report)}) {
        section.appendTo(page);
    }
    return page;
}

} // namespace vantor::sysinfo
