// SPDX-License-Identifier: MIT
#include "hosts/app/AppWindow.hpp"
#include "hosts/app/Options.hpp"
#include "hosts/app/Snapshot.hpp"
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HostDisposal.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/HostWorkload.hpp"
#include "hosts/common/SilentFolders.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "hosts/window/WindowProgram.hpp"
#include "platform/core/MakeForEver.hpp"

#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace {

using namespace vantor;
using namespace vantor::hosts::app;

void say(const std::string& text) {
    hosts::common::complain("vantor-app", text);
}

int showWindow(const Options& options) {
    // A made-up machine is another program's window.
    return hosts::window::showWindow(
        "vantor-app", options.demo ? "vantor-app-demo" : "vantor-app", windowWords(options),
        [&](hosts::qt::SingleInstance& instance) {
            auto window = std::make_unique<AppWindow>(options);
            instance.setCallHandler([shown = window.get()](const hosts::qt::SingleInstance::Words& words) {
                shown->heed(optionsFromWords(words));
            });
            window->heed(options);
            return window;
        });
}

int run(const Options& options, int argc, char** argv) {
    if (const std::optional<std::string> silent = hosts::common::settleFolders()) {
        say(*silent + hosts::common::noAnswer);
        return 1;
    }
    hosts::qt::setEnvironment(options.snapshot.has_value());
    // Workers may be sampling when the window closes.
    platform::makeForEver<hosts::common::HostMachine>(options.demo);
    platform::makeForEver<hosts::common::HostWorkload>(options.demo);
    platform::makeForEver<hosts::common::HostDisposal>(options.demo);
    hosts::common::Complaints complaints("vantor-app");
    complaints.tellStore();
    const hosts::window::Application application("vantor-app", argc, argv);
    if (!options.snapshot) {
        return showWindow(options);
    }
    const int status = writeSnapshot(options);
    complaints.tell(hosts::common::currentFailures());
    return application.canWrite() ? status : 1;
}

} // namespace

int main(int argc, char** argv) {
    hosts::window::settleProcess();
    const std::variant<Options, int> read = readOptions(argc, argv);
    if (const int* status = std::get_if<int>(&read)) {
        return *status;
    }
    const auto& options = std::get<Options>(read);
    if (!options.snapshot && !hosts::qt::hasDisplay()) {
        say("there is no display; --snapshot draws a page into a file, and vantor prints it");
        return 1;
    }
    hosts::qt::quietRemarks(say);
    hosts::window::endProcess(run(options, argc, argv));
}
