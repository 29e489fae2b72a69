// SPDX-License-Identifier: MIT
#include "sysinfo/program/PageText.hpp"

#include "platform/core/PrintableText.hpp"
#include "sysinfo/program/Figures.hpp"

#include <algorithm>
#include <utility>

namespace vantor::sysinfo {

namespace {

constexpr std::size_t headingWidth = 11;
constexpr std::size_t captionWidth = 17;
constexpr std::size_t columnWidth = 14;
constexpr std::size_t valueStart = headingWidth + captionWidth;

/// The columns of a line as people see them: bytes that continue a character take no room.
std::size_t shownWidth(std::string_view text) {
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::ranges::count_if(text, begins));
}

std::string padded(std::string text, std::size_t width) {
    const std::size_t shown = shownWidth(text);
    return text.append(shown < width ? width - shown : 1, ' ');
}

/// Broken at blanks, each further line as far in as the first; a word that is too long stays whole.
std::string wrapped(std::string_view text, std::size_t width) {
    std::string lines;
    std::size_t column = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const std::size_t room = shownWidth(word);
        if (column > 0 && width > valueStart && valueStart + column + 1 + room > width) {
            lines.append("\n").append(valueStart, ' ');
            column = 0;
        }
        lines.append(column > 0 ? " " : "").append(word);
        column += room + (column > 0 ? 1 : 0);
    }
    return lines;
}

/// Lines with their heading in front of the first; left out where it has none. Headings on lines of their own
/// would not leave room for a machine on a terminal of 24 lines.
class Section {
public:
    Section(std::string heading, const Look& look) : m_heading(std::move(heading)), m_look(look) {}

    /// Left out where there is nothing to show.
    void line(const char* caption, const Text& text) {
        if (text && !text->empty()) {
            row(caption, wrapped(platform::printableText(*text), m_look.width));
        }
    }
    void row(const char* caption, const std::string& cells) {
        m_lines += m_lines.empty() ? heading() : std::string(headingWidth, ' ');
        m_lines += padded(caption, captionWidth) + cells + "\n";
    }
    void headingRow(const std::string& cells) {
        const std::string start = m_lines.empty() ? heading() : "\n" + std::string(headingWidth, ' ');
        m_lines += start + std::string(captionWidth, ' ') + emphasised(cells) + "\n";
    }
    void appendTo(std::string& page) const {
        if (!m_lines.empty()) {
            page.append(page.empty() ? "" : "\n").append(m_lines);
        }
    }

private:
    [[nodiscard]] std::string emphasised(const std::string& text) const {
        return m_look.bold ? "\033[1m" + text + "\033[0m" : text;
    }
    [[nodiscard]] std::string heading() const {
        return emphasised(m_heading) + std::string(headingWidth - m_heading.size(), ' ');
    }

    std::string m_heading;
    std::string m_lines;
    Look m_look;
};

Section machineSection(const Page& page, const Look& look) {
    Section section("Machine", look);
    section.line("Name", page.hostname);
    section.line("Model", page.model);
    const std::string wordSize = page.is64Bit ? "64 bits" : "32 bits";
    section.line("Architecture", page.architecture ? *page.architecture + ", " + wordSize : wordSize);
    section.line("Virtual machine", page.hypervisor);
    section.line("Up for", duration(page.uptime));
    return section;
}

Section systemSection(const Page& page, const Look& look) {
    Section section("System", look);
    const bool hasBoth = page.systemType && page.release;
    section.line("Name", page.system);
    section.line("Kernel", hasBoth ? Text(*page.systemType + " " + *page.release) : page.release);
    section.line("Kernel build", page.version);
    if (!page.system || page.system->find(page.productVersion.value_or("")) == std::string::npos) {
        section.line("Version", page.productVersion);
    }
    section.line("Build", page.build);
    section.line("Release type", page.releaseType);
    return section;
}

/// "4 of 6 (8 of 12 threads, 1 socket)", as far as it is known.
Text coresText(const Page& page) {
    const Text threads = counted(page.threads, page.threadsInAll);
    std::string within = threads ? *threads + " threads" : "";
    if (page.packages) {
        within.append(within.empty() ? "" : ", ").append(plural(*page.packages, "socket"));
    }
    const Text cores = counted(page.cores, page.coresInAll);
    return !cores || within.empty() ? cores : *cores + " (" + within + ")";
}

std::string levelName(std::size_t index, std::size_t count) {
    if (count == 2) {
        return index == 0 ? "Performance" : "Efficiency";
    }
    return "Level " + std::to_string(index);
}

std::string cellsOf(const std::vector<std::string>& texts) {
    std::string cells;
    for (const std::string& text : texts) {
        cells += padded(text, columnWidth);
    }
    return cells.erase(cells.find_last_not_of(' ') + 1);
}

/// One column a level; a row that no level knows is left out. A machine with one kind of core has shown its
/// counts already. Each core has first-level caches of its own; the third level serves all kinds.
void addLevels(Section& section, const Page& page) {
    const std::vector<CoreLevel>& levels = page.levels;
    const auto row = [&](const char* caption, const auto& shown) {
        std::vector<std::string> texts;
        bool known = false;
        for (const CoreLevel& level : levels) {
            const Text text = shown(level);
            known = known || text;
            texts.push_back(text.value_or("-"));
        }
        if (known) {
            section.row(caption, cellsOf(texts));
        }
    };
    if (levels.size() > 1) {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            names.push_back(levelName(i, levels.size()));
        }
        section.headingRow(cellsOf(names));
        row("Cores", [](const CoreLevel& each) { return counted(each.cores, each.coresInAll); });
        row("Threads", [](const CoreLevel& each) { return counted(each.threads, each.threadsInAll); });
    }
    row("L1 instructions", [](const CoreLevel& each) { return caches(each.l1Instruction, each.cores, 1); });
    row("L1 data", [](const CoreLevel& each) { return caches(each.l1Data, each.cores, 1); });
    row("L2", [](const CoreLevel& each) { return caches(each.l2, each.threads, each.threadsPerL2); });
}

Section processorSection(const Page& page, const Look& look) {
    Section section("Processor", look);
    section.line("Name", page.processor);
    if (page.family && page.number && page.stepping) {
        section.line("Family", std::to_string(*page.family) + ", model " + std::to_string(*page.number) +
                                   ", stepping " + std::to_string(*page.stepping));
    }
    section.line("Cores", coresText(page));
    if (page.threadSlots && page.threadSlots != page.threadsInAll) {
        section.line("Room for", std::to_string(*page.threadSlots) + " threads");
    }
    section.line("Top frequency", frequency(page.frequency));
    addLevels(section, page);
    section.line("L3", caches(page.l3, page.threads, page.threadsPerL3));
    return section;
}

Section memorySection(const Page& page, const Look& look) {
    Section section("Memory", look);
    section.line("Usable", bytes(page.memory));
    section.line("Swap", page.swap == Count(0) ? Text("none") : bytes(page.swap));
    section.line("Page", bytes(page.pageSize));
    return section;
}

Section gpuSection(const Page& page, const Look& look) {
    Section section("Graphics", look);
    if (page.gpu) {
        section.line("Name", page.gpu->name);
        if (page.gpu->vram != 0) { // 0: the driver does not tell
            section.line("Memory", *bytes(page.gpu->vram) + (page.gpu->hasUnifiedMemory ? " (Unified)" : ""));
        }
    } else if (page.gpuAsked) {
        section.line("Device", "none found");
    }
    return section;
}

} // namespace

std::string pageText(const Page& page, const Look& look) {
    std::string text;
    for (const auto& section : {machineSection, systemSection, processorSection, memorySection, gpuSection}) {
        section(page, look).appendTo(text);
    }
    return text;
}

} // namespace vantor::sysinfo
