// SPDX-License-Identifier: MIT
#include "hosts/common/HttpConfig.hpp"

#include "hosts/common/SecretFile.hpp"
#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

namespace vantor::hosts::common {

using Json = nlohmann::json;
namespace remote = platform::remote;

void noteUnknown(const Json& in, std::initializer_list<std::string_view> known,
                 std::vector<std::string>& notes) {
    for (const auto& [key, value] : in.items()) {
        const std::string note = "\"" + platform::printableText(key, 64) + "\" is not known";
        if (std::ranges::find(known, key) == known.end() && std::ranges::find(notes, note) == notes.end()) {
            notes.push_back(note);
        }
    }
}

std::string lineOfText(const Json& value, const std::string& key) {
    const auto* const found = value.get_ptr<const std::string*>();
    if (found == nullptr || found->empty() ||
        std::ranges::any_of(*found, [](char sign) { return static_cast<unsigned char>(sign) < ' '; })) {
        throw ListMistake(key + " is no line of text");
    }
    return *found;
}

std::string textMember(const Json& in, const char* key) {
    const auto found = in.find(key);
    return found != in.end() ? lineOfText(*found, key) : std::string();
}

const Json* objectMember(const Json& in, const char* key) {
    const auto found = in.find(key);
    if (found != in.end() && !found->is_object()) {
        throw ListMistake(std::string(key) + " is no object");
    }
    return found != in.end() ? &*found : nullptr;
}

namespace {

class Reader {
public:
    Reader(std::string folder, std::vector<std::string>& notes)
        : m_folder(std::move(folder)), m_notes(notes) {}

    remote::Access access(const Json& config) {
        remote::Access access;
        noteUnknown(config, {"basic_auth", "authorization", "tls_config", "http_headers"}, m_notes);
        if (config.contains("basic_auth") && config.contains("authorization")) {
            throw ListMistake("http_config has basic_auth and authorization: one of them can be sent");
        }
        if (const Json* const basic = objectMember(config, "basic_auth")) {
            noteUnknown(*basic, {"username", "password", "password_file"}, m_notes);
            refuse(*basic, "password");
            access.user = textMember(*basic, "username");
            access.password = secret(*basic, "password_file");
        }
        if (const Json* const authorization = objectMember(config, "authorization")) {
            noteUnknown(*authorization, {"type", "credentials", "credentials_file"}, m_notes);
            refuse(*authorization, "credentials");
            if (const std::string type = textMember(*authorization, "type");
                !type.empty() && type != "Bearer") {
                throw ListMistake("authorization: only the type Bearer is known");
            }
            access.bearer = secret(*authorization, "credentials_file");
        }
        if (const Json* const tls = objectMember(config, "tls_config")) {
            noteUnknown(*tls, {"ca_file", "cert_file", "key_file", "insecure_skip_verify"}, m_notes);
            access.authority = file(*tls, "ca_file");
            access.certificate = file(*tls, "cert_file");
            access.key = file(*tls, "key_file");
            std::string problem;
            if (!access.key.empty() && !isPrivate(access.key, problem)) {
                throw ListMistake(problem);
            }
            access.believesAnybody = tls->value("insecure_skip_verify", Json(false)) == Json(true);
        }
        if (const Json* const headers = objectMember(config, "http_headers")) {
            for (const auto& [name, header] : headers->items()) {
                addHeader(access, name, header);
            }
        }
        return access;
    }

private:
    std::string file(const Json& in, const char* key) {
        const std::string name = textMember(in, key);
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
            throw ListMistake(problem);
        }
        return *std::move(secret);
    }
    /// A secret in the list itself is refused: it is copied and shown too easily.
    static void refuse(const Json& in, const char* key) {
        if (in.contains(key)) {
            throw ListMistake(std::string(key) + ": secrets belong into a file of their own (" + key +
                              "_file)");
        }
    }

    void addHeader(remote::Access& access, const std::string& name, const Json& header) {
        const bool isName = !name.empty() && std::ranges::all_of(name, [](char sign) {
            return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
                   (sign >= '0' && sign <= '9') || sign == '-' || sign == '_';
        });
        if (!isName || !header.is_object()) {
            throw ListMistake("http_headers: \"" + platform::printableText(name, 64) + "\" is no header");
        }
        noteUnknown(header, {"values", "secrets", "files"}, m_notes);
        if (header.contains("secrets")) {
            throw ListMistake("http_headers: secrets belong into files of their own (files)");
        }
        for (const Json& value : header.value("values", Json::array())) {
            access.headers.push_back(name + ": " + lineOfText(value, name));
        }
        for (const Json& path : header.value("files", Json::array())) {
            const std::filesystem::path whole = std::filesystem::path(m_folder) / lineOfText(path, name);
            access.headers.push_back(name + ": " + secretAt(whole.string()));
        }
    }

    std::string m_folder;
    std::vector<std::string>& m_notes;
};

} // namespace

std::shared_ptr<const remote::Access> accessFrom(const Json& config, const std::string& folder,
                                                 std::vector<std::string>& notes) {
    return std::make_shared<remote::Access>(Reader(folder, notes).access(config));
}

} // namespace vantor::hosts::common
