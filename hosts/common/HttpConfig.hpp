// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Access.hpp"

#include <nlohmann/json.hpp>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Parts of the user's list that are read alike wherever they stand.
namespace vantor::hosts::common {

/// Ends the reading of a list: what is wrong in it, in English and printable, never a secret.
struct ListMistake : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Notes keys that are not known, each once.
void noteUnknown(const nlohmann::json& in, std::initializer_list<std::string_view> known,
                 std::vector<std::string>& notes);

/// A line of text: what becomes part of a header or of a file's name. Throws a ListMistake for anything else.
[[nodiscard]] std::string lineOfText(const nlohmann::json& value, const std::string& key);
/// A member that is a line of text; empty where there is none.
[[nodiscard]] std::string textMember(const nlohmann::json& in, const char* key);
/// A member that is an object; null where there is none.
[[nodiscard]] const nlohmann::json* objectMember(const nlohmann::json& in, const char* key);

/// Reads `http_config`: with the keys of Prometheus's own `basic_auth`, `authorization`, `tls_config` and
/// `http_headers`. Files in it are found from `folder` on, and those with secrets are opened: nobody else may
/// read them. Throws a ListMistake.
[[nodiscard]] std::shared_ptr<const platform::remote::Access>
accessFrom(const nlohmann::json& config, const std::string& folder, std::vector<std::string>& notes);

} // namespace vantor::hosts::common
