// SPDX-License-Identifier: MIT
#pragma once

#include "charts/ArcChartView.hpp"
#include "charts/HostingContainer.hpp"
#include "controller/ReportRecords.hpp"
#include "platform/machine/Source.hpp"
#include "platform/time/NSTimer.hpp"
#include "platform/views/UILabel.hpp"
#include "platform/views/UIStackView.hpp"
#include "platform/views/UIViewController.hpp"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace vantor {

/// The widget's one view controller: it labels the sections, samples on the global queue, shows on the main
/// queue, keeps three rings and two timers, and answers the host. Held by std::shared_ptr; its timers hold it
/// as well, so it lives until the run loop is cleared. Main thread only, except for the sampling steps.
class TEReportTableViewController final : public platform::UIViewController,
                                          public platform::NCWidgetProviding {
public:
    using ChartContainer = HostingContainer<ArcChartView>;
    using Label = std::shared_ptr<platform::UILabel>;
    using View = std::shared_ptr<platform::UIView>;
    using Sender = const void*; ///< the control behind an action; never looked at

    TEReportTableViewController(const std::string& nibName, const platform::NSBundle* bundle);
    explicit TEReportTableViewController(const platform::NSCoder& coder);

    /// The outlets. The interface file connects them all (see ReportInterface); one that is null when a step
    /// needs it is fatal.
    View progressRAMView;
    Label freeRAMTitleLabel, usedRAMTitleLabel, freeRAMLabel, usedRAMLabel;
    View progressSTORAGEView;
    Label totalSTORAGETitleLabel, usedSTORAGETitleLabel, freeSTORAGETitleLabel, releasableSTORAGETitleLabel;
    Label totalSTORAGELabel, usedSTORAGELabel, freeSTORAGELabel, releasableSTORAGELabel;
    std::shared_ptr<platform::UIStackView> releasableSTORAGEStackView;
    View progressCPUView;
    Label userCPUTitleLabel, systemCPUTitleLabel, inactiveCPUTitleLabel;
    Label userCPULabel, systemCPULabel, inactiveCPULabel;
    Label dataSentNETWORKTitleLabel, dataReceivedNETWORKTitleLabel, dataSentNETWORKLabel,
        dataReceivedNETWORKLabel;

    void viewDidLoad() override;
    void widgetPerformUpdateWithCompletionHandler(
        const std::function<void(platform::NCUpdateResult)>& handler) override;
    void widgetActiveDisplayModeDidChange(platform::NCWidgetDisplayMode mode,
                                          platform::CGSize maximumSize) override;

    /// Timer targets. Each report is sampled on a worker and then shown on the main queue.
    void makeReports();         ///< the reports of the storage, the memory and the processor
    void reportNETWORKStatus(); ///< the network's; it counts on being called once a second

    /// For a host that comes back from a pause (off screen, or the machine slept): takes the network's
    /// counters up without showing them, so that no rate covers the pause.
    void resumeNETWORKStatus();
    /// The same for the whole widget: also takes the processor's ticks up, so that its next share is that of
    /// a second, and reports memory and storage at once. Call it just before the timers are restarted.
    void resumeReports();
    void endReports(); ///< for a host that goes before the main loop does: no timer keeps the controller

    /// Button actions. Those that ask the Vantor app for something open a link to it, and do nothing
    /// without an extension context.
    void manualInfoRefresh(Sender sender); ///< makes the reports now, then at the interval in the store
    void cleanRam(Sender sender);     ///< asks the app to clean RAM, or to show it if the user prefers that
    void openApp(Sender sender);      ///< asks the app for its storage page
    void showCpuChart(Sender sender); ///< asks the app for its processor chart

    /// What the figures on screen were made of.
    [[nodiscard]] const ReportRecords& records() const { return m_records; }
    /// Called on the main thread after each display step, with the source of the section that it was for.
    void setReportHandler(std::function<void(platform::Source)> handler) { m_reported = std::move(handler); }

    [[nodiscard]] const std::shared_ptr<platform::NSTimer>& refreshTime() const { return m_refreshTime; }
    [[nodiscard]] const std::shared_ptr<ChartContainer>& ramChartView() const { return m_ramChartView; }
    /// The ring of the storage, spelt as hosts know it.
    [[nodiscard]] const std::shared_ptr<ChartContainer>& storateChartView() const {
        return m_storateChartView;
    }
    [[nodiscard]] const std::shared_ptr<ChartContainer>& cpuChartView() const { return m_cpuChartView; }

private:
    void setupTitleLabels();    ///< writes the captions, in the user's language
    void refreshInfo();         ///< makes the reports and starts the timer of the next ones anew
    void reportSTORAGEStatus(); ///< asks a worker for the volume's numbers, then shows them
    void reportRAMStatus();     ///< asks a worker for the memory's numbers, then shows them
    void reportCPUStatus();     ///< asks a worker for the shares since the last report, then shows them
    void resumeCPUStatus();     ///< takes the ticks up now, and shows the share of the second that follows
    /// The second half of each, on the main thread: ring, rows, record.
    void displaySTORAGE(const StorageFigures& figures, const StorageTexts& texts);
    void displayRAM(const MemoryFigures& figures);
    void displayCPU(const CpuUsage& usage);
    [[nodiscard]] std::pair<NetworkFigures, NetworkTexts> sampleNETWORK() const; ///< on the worker
    void displayNETWORK(const NetworkFigures& figures, const NetworkTexts& texts);
    void keepCounters(const DataUsageInfo& usage); ///< the next network report counts from these
    void reported(platform::Source section);       ///< tells the host that a section has been shown
    void openLink(std::string_view link);          ///< hands a link to the extension context, if there is one
    std::shared_ptr<ChartContainer> placeChart(const View& placeholder, std::string_view titleKey);
    std::shared_ptr<platform::NSTimer> repeat(double seconds,
                                              void (TEReportTableViewController::*selector)());
    std::shared_ptr<TEReportTableViewController> self();

    std::shared_ptr<platform::NSTimer> m_refreshTime, m_networkTime;
    std::shared_ptr<platform::NSTimer> m_shareAfterPause; // fires once
    std::atomic<std::uint64_t> m_oldDataSent{0};          // read by the sampling step
    std::atomic<std::uint64_t> m_oldDataReceived{0};
    bool m_isFirstNetworkDataLoad = true;
    std::shared_ptr<ChartContainer> m_ramChartView, m_storateChartView, m_cpuChartView;
    ReportRecords m_records;
    std::function<void(platform::Source)> m_reported;
};

} // namespace vantor
