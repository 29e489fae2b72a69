// SPDX-License-Identifier: MIT
#include "platform/linux/removal/KnownCaches.hpp"

#include <fnmatch.h>

#include <array>
#include <string>
#include <utility>

namespace vantor::platform::linux {

const std::vector<KnownCache>& knownCaches() {
    using enum CacheKind;
    using enum CacheNature;
    static const std::vector<KnownCache> caches{
        {"thumbnails", harmless, pictures, {"thumbnails"}},
        {"fontconfig", harmless, working, {"fontconfig"}},
        {"gstreamer", harmless, working, {"gstreamer-1.0"}},
        {"samba", harmless, working, {"samba"}},
        {"vlc", harmless, working, {"vlc"}},
        {"babl", harmless, working, {"babl"}},
        {"gegl", harmless, working, {"gegl-*"}},
        {"gnome-software", harmless, downloads, {"gnome-software"}},
        {"pip", harmless, downloads, {"pip"}},
        {"yarn", harmless, downloads, {"yarn"}},
        // A build that runs takes what it just made from there.
        {"go-build", harmless, builds, {"go-build"}, {"go"}},
        {"ccache", harmless, builds, {"ccache", "~/.ccache/[0-9a-f]"}}, // beside its settings
        {"sccache", harmless, builds, {"sccache"}},
        {"firefox",
         harmless,
         pages,
         {"mozilla/firefox/*/cache2"},
         {"firefox", "firefox-esr", "firefox-bin"},
         {"~/.mozilla/firefox/*/lock", "mozilla/firefox/*/lock"}},
        {"chromium",
         harmless,
         pages,
         {"chromium/*/Cache", "chromium/*/Code Cache"},
         {"chromium", "chromium-browse"},
         {"chromium/SingletonLock"}},
        {"google-chrome",
         harmless,
         pages,
         {"google-chrome/*/Cache", "google-chrome/*/Code Cache"},
         {"chrome", "google-chrome"},
         {"google-chrome/SingletonLock"}},
        {"epiphany", harmless, pages, {"epiphany/WebKitCache"}, {"epiphany", "epiphany-browse"}},
        {"huggingface", costly, models, {"huggingface"}},
        {"torch", costly, models, {"torch"}},
        {"ms-playwright", costly, models, {"ms-playwright"}},
        {"puppeteer", costly, models, {"puppeteer"}},
        {"electron", costly, models, {"electron"}},
        {"winetricks", costly, models, {"winetricks"}},
        {"bazel", costly, builds, {"bazel"}, {"bazel", "bazelisk", "java"}}, // its server is in Java
        {"jetbrains",
         costly,
         builds,
         {"JetBrains/*/caches"},
         {"java", "clion", "datagrip", "goland", "idea", "phpstorm", "pycharm", "rider", "rubymine",
          "rustrover", "webstorm"}},
    };
    return caches;
}

CacheNature keptNature(std::string_view name) {
    using enum CacheNature;
    static constexpr std::array<std::pair<const char*, CacheNature>, 20> natures{
        {{"obexd", settings},
         {"keepassxc", settings},
         {"ibus", settings},
         {"ibus-*", settings},
         {"drkonqi", settings},
         {"plasmashell", shaders},
         {"kwin", shaders},
         {"*.kcache", shaders},
         {"qtshadercache-*", shaders},
         {"mesa_shader_cache*", shaders},
         {"nvidia", shaders},
         {"radv_builtin_shaders*", shaders},
         {"evolution", media},
         {"spotify", media},
         {"wallpaper", media},
         {"gnome-control-center", media},
         {"thunderbird", media},
         {"geary", media},
         {"rclone", unsent},
         {"JetBrains", history}}};
    for (const auto& [pattern, nature] : natures) {
        if (::fnmatch(pattern, std::string(name).c_str(), 0) == 0) {
            return nature;
        }
    }
    return unknown;
}

} // namespace vantor::platform::linux
