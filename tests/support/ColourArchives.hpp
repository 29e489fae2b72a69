// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantor::tests {

/// A line of colour-archives.txt.
struct ColourArchive {
    std::string name;
    std::string outcome;   ///< what it decodes to
    std::string colorName; ///< the named colour that this is; "-": none
    std::string base64;
};

inline const std::vector<ColourArchive>& colourArchives() {
    static const std::vector<ColourArchive> all = [] {
        std::vector<ColourArchive> read;
        std::ifstream file(VANTOR_SHARED_TEST_DATA "/colour-archives.txt");
        std::string line;
        for (std::getline(file, line); std::getline(file, line);) {
            std::istringstream fields(line);
            ColourArchive& archive = read.emplace_back();
            for (std::string* const field :
                 {&archive.name, &archive.outcome, &archive.colorName, &archive.base64}) {
                std::getline(fields, *field, '\t');
            }
        }
        return read;
    }();
    return all;
}

inline std::string archiveNamed(const std::string& name) {
    for (const ColourArchive& archive : colourArchives()) {
        if (archive.name == name) {
            return archive.base64;
        }
    }
    throw std::out_of_range("no archive " + name);
}

} // namespace vantor::tests
