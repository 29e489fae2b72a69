// SPDX-License-Identifier: MIT
#include "hosts/common/FleetFile.hpp"

#include "hosts/common/SecretFile.hpp"
#include "platform/core/PrintableText.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace vantor::hosts::common {

namespace {

using Json = nlohmann::json;
namespace remote = platform::remote;

/// Ends the reading of the file: what is wrong, and where.
struct Mistake {
    std::string what;
};

class Reader {
public:
    Reader(std::string folder, std::vector<std::string>& notes)
        : m_folder(std::move(folder)), m_notes(notes) {}

    /// A member that is an object; null where there is none.
    const Json* object(const Json& in, const char* key) {
        const auto found = in.find(key);
        if (found != in.end() && !found->is_object()) {
            throw Mistake{std::string(key) + " is no object"};
        }
        return found != in.end() ? &*found : nullptr;
    }
    static std::string text(const Json& in, const char* key) {
        const auto found = in.find(key);
        if (found == in.end()) {
            return {};
        }
        if (!found->is_string()) {
            throw Mistake{std::string(key) + " is no text"};
        }
        return plain(*found, key);
    }
    /// What becomes part of a header or of a file's name.
    static std::string plain(const Json& value, const std::string& key) {
        const auto* const found = value.get_ptr<const std::string*>();
        if (found == nullptr || found->empty() ||
            std::ranges::any_of(*found, [](char sign) { return static_cast<unsigned char>(sign) < ' '; })) {
            throw Mistake{key + " is no line of text"};
        }
        return *found;
    }
    std::string file(const Json& in, const char* key) {
        const std::string name = text(in, key);
        return name.empty() ? name : (std::filesystem::path(m_folder) / name).string();
    }
    std::string secret(const Json& in, const char* key) {
        const std::string path = file(in, key);
        return path.empty() ? path : secretAt(path);
    }
    static std::string secretAt(const std::string& path) {
        std::string problem;
        std::optional<std::string> secret = readSecret(path, problem);
        if (!secret) {
            throw Mistake{problem};
        }
        return *std::move(secret);
    }
    /// A secret in the list itself is refused: it is copied and shown too easily.
    static void refuse(const Json& in, const char* key) {
        if (in.contains(key)) {
            throw Mistake{std::string(key) + ": secrets belong into a file of their own (" + key + "_file)"};
        }
    }
    void noteUnknown(const Json& in, std::initializer_list<std::string_view> known) {
        for (const auto& [key, value] : in.items()) {
            if (std::ranges::find(known, key) == known.end()) {
                m_notes.push_back("\"" + platform::printableText(key, 64) + "\" is not known");
            }
        }
    }

    remote::Access access(const Json& config) {
        remote::Access access;
        noteUnknown(config, {"basic_auth", "authorization", "tls_config", "http_headers"});
        if (const Json* const basic = object(config, "basic_auth")) {
            noteUnknown(*basic, {"username", "password", "password_file"});
            refuse(*basic, "password");
            access.user = text(*basic, "username");
            access.password = secret(*basic, "password_file");
        }
        if (const Json* const authorization = object(config, "authorization")) {
            noteUnknown(*authorization, {"type", "credentials", "credentials_file"});
            refuse(*authorization, "credentials");
            if (const std::string type = text(*authorization, "type"); !type.empty() && type != "Bearer") {
                throw Mistake{"authorization: only the type Bearer is known"};
            }
            access.bearer = secret(*authorization, "credentials_file");
        }
        if (const Json* const tls = object(config, "tls_config")) {
            noteUnknown(*tls, {"ca_file", "cert_file", "key_file", "insecure_skip_verify"});
            access.authority = file(*tls, "ca_file");
            access.certificate = file(*tls, "cert_file");
            access.key = file(*tls, "key_file");
            std::string problem;
            if (!access.key.empty() && !isPrivate(access.key, problem)) {
                throw Mistake{problem};
            }
            access.believesAnybody = tls->value("insecure_skip_verify", Json(false)) == Json(true);
        }
        if (const Json* const headers = object(config, "http_headers")) {
            for (const auto& [name, header] : headers->items()) {
                addHeader(access, name, header);
            }
        }
        return access;
    }

private:
    void addHeader(remote::Access& access, const std::string& name, const Json& header) {
        const bool isName = !name.empty() && std::ranges::all_of(name, [](char sign) {
            return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
                   (sign >= '0' && sign <= '9') || sign == '-' || sign == '_';
        });
        if (!isName || !header.is_object()) {
            throw Mistake{"http_headers: \"" + platform::printableText(name, 64) + "\" is no header"};
        }
        noteUnknown(header, {"values", "secrets", "files"});
        if (header.contains("secrets")) {
            throw Mistake{"http_headers: secrets belong into files of their own (files)"};
        }
        for (const Json& value : header.value("values", Json::array())) {
            access.headers.push_back(name + ": " + plain(value, name));
        }
        for (const Json& path : header.value("files", Json::array())) {
            const std::filesystem::path whole = std::filesystem::path(m_folder) / plain(path, name);
            access.headers.push_back(name + ": " + secretAt(whole.string()));
        }
    }

    std::string m_folder;
    std::vector<std::string>& m_notes;
};

std::optional<double> seconds(const Json& source) {
    const auto found = source.find("every");
    if (found == source.end()) {
        return std::nullopt;
    }
    const double value = found->is_number() ? found->get<double>() : 0;
    if (!(value >= 0.1 && value <= 3600)) {
        throw Mistake{"every is no number of seconds from 0.1 to 3600"};
    }
    return value;
}

/// The source's node of that name.
std::optional<FleetNode> nodeIn(const Json& source, std::string_view name, Reader& reader) {
    for (const Json& entry : source.value("nodes", Json::array())) {
        const std::string written = Reader::plain(entry, "nodes");
        std::string problem;
        const std::optional<remote::NodeAddress> address = remote::nodeAddress(written, problem);
        if (!address) {
            throw Mistake{"nodes: \"" + platform::printableText(written, 128) + "\": " + problem};
        }
        if (name != address->name && name != written) {
            continue;
        }
        FleetNode node{*address, nullptr, seconds(source)};
        if (const Json* const config = reader.object(source, "http_config")) {
            node.access = std::make_shared<remote::Access>(reader.access(*config));
        }
        return node;
    }
    return std::nullopt;
}

} // namespace

std::optional<FleetNode> fleetNode(std::string_view text, const std::string& folder, std::string_view name,
                                   std::string& problem, std::vector<std::string>& notes) {
    const Json file = Json::parse(text, nullptr, false);
    const auto sources = file.is_object() ? file.find("sources") : file.end();
    if (!file.is_object() || sources == file.end() || !sources->is_array()) {
        problem = "is no JSON object with a list of \"sources\"";
        return std::nullopt;
    }
    try {
        Reader reader(folder, notes);
        for (const Json& source : *sources) {
            if (!source.is_object() || !source.value("nodes", Json::array()).is_array()) {
                throw Mistake{"a source is no object with a list of \"nodes\""};
            }
            if (std::optional<FleetNode> node = nodeIn(source, name, reader)) {
                reader.noteUnknown(source, {"name", "nodes", "every", "http_config"});
                return node;
            }
        }
        problem = "has no node \"" + platform::printableText(name, 128) + "\"";
    } catch (const Mistake& mistake) {
        problem = mistake.what;
    } catch (const Json::exception&) { // a value of another kind than its key takes
        problem = "has a value of the wrong kind";
    }
    return std::nullopt;
}

} // namespace vantor::hosts::common
