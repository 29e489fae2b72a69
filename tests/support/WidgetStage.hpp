// SPDX-License-Identifier: MIT
#pragma once

#include "HandTurnedQueue.hpp"
#include "SimulatedStore.hpp"
#include "controller/ReportInterface.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vantor::tests {

/// A host that notes what it is asked for.
class RecordingContext final : public platform::NSExtensionContext {
public:
    std::vector<std::string> opened;

    void openURL(const platform::NSURL& url, std::function<void(bool)> completionHandler) override {
        opened.push_back(url.absoluteString());
        hadCompletionHandler = hadCompletionHandler || completionHandler != nullptr;
    }
    bool hadCompletionHandler = false;
};

/// A machine of 4 GiB and 128 GB on which the widget can be played through by hand.
inline platform::SimulatedState smallMachine() {
    platform::SimulatedState state;
    state.physicalMemory = 4'294'967'296;
    state.pageSize = 16384;
    state.virtualMemory.free_count = 65536; // 1 GiB
    state.virtualMemory.inactive_count = 65536;
    state.cpuLoad = {.user = 20, .system = 10, .idle = 65, .nice = 5};
    state.interfaces = {{"en0", platform::AF_LINK, 7'000'000, 5'000'000}};
    state.volume = platform::VolumeCapacities{128'000'000'000, 20'000'000'000, 30'000'000'000, 7'000'000'000};
    return state;
}

/// The whole widget on that machine, on a clock and queues that only the test turns.
struct WidgetStage {
    explicit WidgetStage(bool withContext = true, platform::SimulatedMachine::Script script = {},
                         std::function<void()> openingStore = {})
        : machine(smallMachine(), std::move(script)), viewer({}, std::move(openingStore)) {
        if (withContext) {
            controller->setExtensionContext(context);
        }
    }

    /// Loads the view and plays the reports that this starts.
    void load() {
        controller->view();
        loop.play();
    }
    void play() { loop.play(); }
    void advance(double seconds) { loop.advance(seconds); }
    void setStore(const std::string& entries) {
        viewer.change([&](platform::SimulatedViewerState& state) { state.suite = storeHolding(entries); });
    }
    ArcChartViewModel& model(const std::shared_ptr<TEReportTableViewController::ChartContainer>& chart) {
        return *chart->hostingController()->rootView()->arcChartViewModel;
    }

    platform::SimulatedMachine machine;
    platform::SimulatedViewer viewer;
    platform::Current<platform::Machine> currentMachine{machine};
    platform::Current<platform::Viewer> currentViewer{viewer};
    HandTurnedLoop loop;
    std::shared_ptr<RecordingContext> context = std::make_shared<RecordingContext>();
    std::shared_ptr<TEReportTableViewController> controller = ReportInterface::instantiate();
};

} // namespace vantor::tests
