// SPDX-License-Identifier: MIT
#pragma once

#include "ColourArchives.hpp"
#include "platform/simulated/SimulatedViewer.hpp"

#include <string>

namespace vantor::tests {

/// A preference file in XML whose top dictionary holds `entries` ("<key>…</key><true/>…").
inline platform::SuiteFile storeHolding(const std::string& entries) {
    platform::SuiteFile file;
    file.path = "/store.plist";
    file.content =
        R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)" + entries + "</dict></plist>";
    file.exists = true;
    file.usable = true;
    return file;
}

inline std::string storedFlag(const std::string& key, bool value = true) {
    return "<key>" + key + "</key>" + (value ? "<true/>" : "<false/>");
}

inline std::string storedText(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

/// "chartcolor" holding bytes, given in base64.
inline std::string storedColor(const std::string& base64) {
    return "<key>chartcolor</key><data>" + base64 + "</data>";
}

/// "chartcolor" holding a named archive: "rgb-blue" is 0.25/0.5/0.75, "gray-clear-unnamed" the clear colour,
/// "root-string" no colour at all.
inline std::string storedArchive(const std::string& name) {
    return storedColor(archiveNamed(name));
}

/// Bytes that are no archive.
inline const std::string garbage = "AAECAwQFBgc=";

} // namespace vantor::tests
