// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <string>

namespace vantor::platform::remote {

/// The calls of libcurl (its multi interface, curl.se/libcurl/c) that are used, found in the library at run
/// time. At least version 7.85, of 2022. Once opened it stays: threads of its own may run to the end.
struct CurlLibrary {
    decltype(&::curl_global_init) globalInit = nullptr;
    decltype(&::curl_easy_init) easyInit = nullptr;
    decltype(&::curl_easy_setopt) easySetopt = nullptr;
    decltype(&::curl_easy_getinfo) easyGetinfo = nullptr;
    decltype(&::curl_easy_reset) easyReset = nullptr;
    decltype(&::curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&::curl_easy_strerror) easyStrerror = nullptr;
    decltype(&::curl_slist_append) slistAppend = nullptr;
    decltype(&::curl_slist_free_all) slistFreeAll = nullptr;
    decltype(&::curl_multi_init) multiInit = nullptr;
    decltype(&::curl_multi_setopt) multiSetopt = nullptr;
    decltype(&::curl_multi_add_handle) multiAddHandle = nullptr;
    decltype(&::curl_multi_remove_handle) multiRemoveHandle = nullptr;
    decltype(&::curl_multi_perform) multiPerform = nullptr;
    decltype(&::curl_multi_poll) multiPoll = nullptr;
    decltype(&::curl_multi_wakeup) multiWakeup = nullptr;
    decltype(&::curl_multi_info_read) multiInfoRead = nullptr;
    decltype(&::curl_multi_cleanup) multiCleanup = nullptr;

    /// Opens the library; false, with the reason in English, where it is missing or too old.
    [[nodiscard]] bool open(std::string& problem);
};

} // namespace vantor::platform::remote
