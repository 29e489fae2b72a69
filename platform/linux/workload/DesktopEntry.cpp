// SPDX-License-Identifier: MIT
#include "platform/linux/workload/DesktopEntry.hpp"

#include "platform/linux/kernel/TextScan.hpp"

namespace vantor::platform::linux {

namespace {

/// The value of a string: "\s" is a blank, "\\" a backslash; a tab or a line feed has no place in a name.
std::string stringValue(std::string_view text) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            value.push_back(text[i]);
            continue;
        }
        const char escaped = text[++i];
        value.push_back(escaped == 's' || escaped == 'n' || escaped == 't' || escaped == 'r' ? ' ' : escaped);
    }
    return value;
}

/// The next argument of a command, without its quotes.
std::string takeArgument(std::string_view& command) {
    skipBlanks(command);
    std::string argument;
    bool isQuoted = false;
    while (!command.empty() && (isQuoted || !isBlank(command.front()))) {
        if (command.front() == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted && command.front() == '\\' && command.size() > 1) {
            command.remove_prefix(1);
            argument.push_back(command.front());
        } else {
            argument.push_back(command.front());
        }
        command.remove_prefix(1);
    }
    return argument;
}

/// What a command starts: past env(1) and the variables that it sets.
std::string programOf(std::string_view command) {
    std::string program = takeArgument(command);
    const auto fileName = [](const std::string& path) { return path.substr(path.rfind('/') + 1); };
    while (!program.empty() && (fileName(program) == "env" || program.find('=') != std::string::npos)) {
        program = takeArgument(command);
    }
    return fileName(program);
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text) {
    DesktopEntry entry;
    bool isInside = false;
    bool isApplication = true;
    while (const std::optional<Line> line = takeLine(text)) {
        std::string_view value = line->text;
        if (value.starts_with('[')) {
            if (isInside) {
                break; // what follows are its actions
            }
            isInside = value.starts_with("[Desktop Entry]");
            continue;
        }
        std::string_view key = takeUntil(value, '=');
        while (!key.empty() && isBlank(key.back())) {
            key.remove_suffix(1);
        }
        skipBlanks(value);
        if (!isInside) {
            continue;
        }
        if (key == "Name") {
            entry.name = stringValue(value);
        } else if (key == "Icon") {
            entry.icon = stringValue(value);
        } else if (key == "Exec") {
            entry.program = programOf(stringValue(value));
        } else if (key == "Type") {
            isApplication = value.starts_with("Application");
        }
    }
    return isApplication && !entry.name.empty() ? std::optional(entry) : std::nullopt;
}

} // namespace vantor::platform::linux
