// SPDX-License-Identifier: MIT
#include "platform/remote/fetch/CurlLibrary.hpp"

#include <dlfcn.h>

#include <initializer_list>

namespace vantor::platform::remote {

namespace {

template<class Function>
bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(::dlsym(library, name));
    return function != nullptr;
}

} // namespace

bool CurlLibrary::open(std::string& problem) {
    void* library = nullptr;
    for (const char* const name : {"libcurl.so.4", "libcurl-gnutls.so.4"}) {
        library = library != nullptr ? library : ::dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    }
    if (library == nullptr) {
        problem = "libcurl is not installed (Debian's package libcurl4)";
        return false;
    }
    const bool hasAll =
        find(library, "curl_global_init", globalInit) && find(library, "curl_easy_init", easyInit) &&
        find(library, "curl_easy_setopt", easySetopt) && find(library, "curl_easy_getinfo", easyGetinfo) &&
        find(library, "curl_easy_reset", easyReset) && find(library, "curl_easy_cleanup", easyCleanup) &&
        find(library, "curl_easy_strerror", easyStrerror) &&
        find(library, "curl_slist_append", slistAppend) &&
        find(library, "curl_slist_free_all", slistFreeAll) && find(library, "curl_multi_init", multiInit) &&
        find(library, "curl_multi_setopt", multiSetopt) &&
        find(library, "curl_multi_add_handle", multiAddHandle) &&
        find(library, "curl_multi_remove_handle", multiRemoveHandle) &&
        find(library, "curl_multi_perform", multiPerform) && find(library, "curl_multi_poll", multiPoll) &&
        find(library, "curl_multi_wakeup", multiWakeup) &&
        find(library, "curl_multi_info_read", multiInfoRead) &&
        find(library, "curl_multi_cleanup", multiCleanup);
    if (!hasAll || globalInit(CURL_GLOBAL_DEFAULT) != CURLE_OK) {
        problem = "libcurl is older than 7.85, or does not work";
        return false;
    }
    return true;
}

} // namespace vantor::platform::remote
