// SPDX-License-Identifier: MIT
#pragma once

#include "platform/simulated/SimulatedMachine.hpp"

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

/// Keyed archives in XML, as base64: RGB 0.25/0.5/0.75, and gray 0 with opacity 0, the clear colour.
inline const std::string archivedBlue =
    "PHBsaXN0IHZlcnNpb249IjEuMCI+PGRpY3Q+PGtleT4kdmVyc2lvbjwva2V5PjxpbnRlZ2VyPjEwMDAwMDwvaW50ZWdlcj48a2V5"
    "PiRhcmNoaXZlcjwva2V5PjxzdHJpbmc+TlNLZXllZEFyY2hpdmVyPC9zdHJpbmc+PGtleT4kdG9wPC9rZXk+PGRpY3Q+PGtleT5y"
    "b290PC9rZXk+PGRpY3Q+PGtleT5DRiRVSUQ8L2tleT48aW50ZWdlcj4xPC9pbnRlZ2VyPjwvZGljdD48L2RpY3Q+PGtleT4kb2Jq"
    "ZWN0czwva2V5PjxhcnJheT48c3RyaW5nPiRudWxsPC9zdHJpbmc+PGRpY3Q+PGtleT5VSUNvbG9yQ29tcG9uZW50Q291bnQ8L2tl"
    "eT48aW50ZWdlcj40PC9pbnRlZ2VyPjxrZXk+VUlSZWQ8L2tleT48cmVhbD4wLjI1PC9yZWFsPjxrZXk+VUlHcmVlbjwva2V5Pjxy"
    "ZWFsPjAuNTwvcmVhbD48a2V5PlVJQmx1ZTwva2V5PjxyZWFsPjAuNzU8L3JlYWw+PGtleT5VSUFscGhhPC9rZXk+PHJlYWw+MTwv"
    "cmVhbD48a2V5PiRjbGFzczwva2V5PjxkaWN0PjxrZXk+Q0YkVUlEPC9rZXk+PGludGVnZXI+MjwvaW50ZWdlcj48L2RpY3Q+PC9k"
    "aWN0PjxkaWN0PjxrZXk+JGNsYXNzbmFtZTwva2V5PjxzdHJpbmc+VUlDb2xvcjwvc3RyaW5nPjxrZXk+JGNsYXNzZXM8L2tleT48"
    "YXJyYXk+PHN0cmluZz5VSUNvbG9yPC9zdHJpbmc+PHN0cmluZz5OU09iamVjdDwvc3RyaW5nPjwvYXJyYXk+PC9kaWN0PjwvYXJy"
    "YXk+PC9kaWN0PjwvcGxpc3Q+";
inline const std::string archivedClear =
    "PHBsaXN0IHZlcnNpb249IjEuMCI+PGRpY3Q+PGtleT4kdmVyc2lvbjwva2V5PjxpbnRlZ2VyPjEwMDAwMDwvaW50ZWdlcj48a2V5"
    "PiRhcmNoaXZlcjwva2V5PjxzdHJpbmc+TlNLZXllZEFyY2hpdmVyPC9zdHJpbmc+PGtleT4kdG9wPC9rZXk+PGRpY3Q+PGtleT5y"
    "b290PC9rZXk+PGRpY3Q+PGtleT5DRiRVSUQ8L2tleT48aW50ZWdlcj4xPC9pbnRlZ2VyPjwvZGljdD48L2RpY3Q+PGtleT4kb2Jq"
    "ZWN0czwva2V5PjxhcnJheT48c3RyaW5nPiRudWxsPC9zdHJpbmc+PGRpY3Q+PGtleT5VSUNvbG9yQ29tcG9uZW50Q291bnQ8L2tl"
    "eT48aW50ZWdlcj4yPC9pbnRlZ2VyPjxrZXk+VUlXaGl0ZTwva2V5PjxyZWFsPjA8L3JlYWw+PGtleT5VSUFscGhhPC9rZXk+PHJl"
    "YWw+MDwvcmVhbD48a2V5PiRjbGFzczwva2V5PjxkaWN0PjxrZXk+Q0YkVUlEPC9rZXk+PGludGVnZXI+MjwvaW50ZWdlcj48L2Rp"
    "Y3Q+PC9kaWN0PjxkaWN0PjxrZXk+JGNsYXNzbmFtZTwva2V5PjxzdHJpbmc+VUlDb2xvcjwvc3RyaW5nPjxrZXk+JGNsYXNzZXM8"
    "L2tleT48YXJyYXk+PHN0cmluZz5VSUNvbG9yPC9zdHJpbmc+PHN0cmluZz5OU09iamVjdDwvc3RyaW5nPjwvYXJyYXk+PC9kaWN0"
    "PjwvYXJyYXk+PC9kaWN0PjwvcGxpc3Q+";
/// An archive whose top-level object is a string, and bytes that are no archive.
inline const std::string archivedString =
    "PHBsaXN0IHZlcnNpb249IjEuMCI+PGRpY3Q+PGtleT4kdmVyc2lvbjwva2V5PjxpbnRlZ2VyPjEwMDAwMDwvaW50ZWdlcj48a2V5"
    "PiRhcmNoaXZlcjwva2V5PjxzdHJpbmc+TlNLZXllZEFyY2hpdmVyPC9zdHJpbmc+PGtleT4kdG9wPC9rZXk+PGRpY3Q+PGtleT5y"
    "b290PC9rZXk+PGRpY3Q+PGtleT5DRiRVSUQ8L2tleT48aW50ZWdlcj4xPC9pbnRlZ2VyPjwvZGljdD48L2RpY3Q+PGtleT4kb2Jq"
    "ZWN0czwva2V5PjxhcnJheT48c3RyaW5nPiRudWxsPC9zdHJpbmc+PHN0cmluZz5ibHVlPC9zdHJpbmc+PC9hcnJheT48L2RpY3Q+"
    "PC9wbGlzdD4=";
inline const std::string garbage = "AAECAwQFBgc=";

} // namespace vantor::tests
