// SPDX-License-Identifier: MIT
#include "controller/TEReportTableViewController.hpp"

#include "controller/Outlet.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "settings/SharedStore.hpp"

#include <numbers>
#include <utility>

namespace vantor {

using platform::NSLocalizedString;

namespace {

constexpr double expandedHeight = 360.0; // points
constexpr double networkInterval = 1.0;  // seconds: the network figures are "per second" because of it
constexpr double chartTop = 5.0;         // points from the placeholder's top
constexpr double chartBottom = -8.0; // and from its bottom: room for the caption that hangs below the ring
constexpr double pi = std::numbers::pi;

ArcChartView makeChart(std::string title) {
    return {
        .arcChartViewModel = std::make_shared<ArcChartViewModel>(),
        .startAngle = {3 * pi / 4},
        .endAngle = {pi / 4},
        .clockwise = false,
        .outerRingLineWidth = 2.0,
        .outerRingColor = platform::UIColor::secondaryLabelColor(),
        .outerRingOpacity = 0.3,
        .innerRingLineWidth = 10.0,
        .title = std::move(title),
        .titleColor = platform::UIColor::labelColor(),
        .titleTopPadding = 8.0,
    };
}

void pinInto(platform::UIView& chart, platform::UIView& placeholder) {
    chart.setTranslatesAutoresizingMaskIntoConstraints(false);
    chart.leftAnchor().constraintEqualToAnchor(placeholder.leftAnchor()).setActive(true);
    chart.rightAnchor().constraintEqualToAnchor(placeholder.rightAnchor()).setActive(true);
    chart.topAnchor().constraintEqualToAnchor(placeholder.topAnchor(), chartTop).setActive(true);
    chart.bottomAnchor().constraintEqualToAnchor(placeholder.bottomAnchor(), chartBottom).setActive(true);
}

} // namespace

TEReportTableViewController::TEReportTableViewController(const std::string& nibName,
                                                         const platform::NSBundle* bundle)
    : UIViewController(nibName, bundle) {}

TEReportTableViewController::TEReportTableViewController(const platform::NSCoder& coder)
    : UIViewController(coder) {}

std::shared_ptr<TEReportTableViewController> TEReportTableViewController::self() {
    return std::static_pointer_cast<TEReportTableViewController>(shared_from_this());
}

void TEReportTableViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    setupTitleLabels();
    refreshInfo(); // its display steps come after this turn, when the charts below exist
    m_ramChartView = placeChart(progressRAMView, "home_USEDRAM");
    m_storateChartView = placeChart(progressSTORAGEView, "home_USEDSPACE");
    m_cpuChartView = placeChart(progressCPUView, "home_USEDCPU");
    m_networkTime = repeat(networkInterval, &TEReportTableViewController::reportNETWORKStatus);
    if (extensionContext() != nullptr) {
        extensionContext()->setWidgetLargestAvailableDisplayMode(platform::NCWidgetDisplayMode::expanded);
    }
}

void TEReportTableViewController::setupTitleLabels() {
    const std::pair<const Label&, std::string_view> captions[] = {
        {totalSTORAGETitleLabel, "home_TOTALSPACE"},
        {usedSTORAGETitleLabel, "home_USEDSPACE"},
        {freeSTORAGETitleLabel, "home_FREESPACE"},
        {releasableSTORAGETitleLabel, "home_RELEASABLESPACE"},
        {usedRAMTitleLabel, "home_USEDRAM"},
        {freeRAMTitleLabel, "home_FREE"},
        {userCPUTitleLabel, "home_USER"},
        {systemCPUTitleLabel, "home_SYSTEM"},
        {inactiveCPUTitleLabel, "home_INACTIVE"},
        {dataSentNETWORKTitleLabel, "home_DATASENT"},
        {dataReceivedNETWORKTitleLabel, "home_DATARECEIVED"},
    };
    for (const auto& [label, key] : captions) {
        outlet(*this, label)->setText(NSLocalizedString(key));
    }
}

std::shared_ptr<TEReportTableViewController::ChartContainer>
TEReportTableViewController::placeChart(const View& placeholder, std::string_view titleKey) {
    auto container = ChartContainer::initWithContent(makeChart(NSLocalizedString(titleKey)), *this);
    outlet(*this, placeholder)->addSubview(container);
    pinInto(*container, *placeholder);
    return container;
}

std::shared_ptr<platform::NSTimer>
TEReportTableViewController::repeat(double seconds, void (TEReportTableViewController::*selector)()) {
    return platform::NSTimer::scheduledTimerWithTimeInterval(
        seconds, [target = self(), selector] { (target.get()->*selector)(); }, true);
}

void TEReportTableViewController::refreshInfo() {
    makeReports();
    if (m_refreshTime != nullptr) {
        std::exchange(m_refreshTime, nullptr)->invalidate();
    }
    m_refreshTime = repeat(refreshInterval(), &TEReportTableViewController::makeReports);
}

void TEReportTableViewController::makeReports() {
    reportSTORAGEStatus();
    reportRAMStatus();
    reportCPUStatus();
}

void TEReportTableViewController::endReports() {
    for (auto* const timer : {&m_refreshTime, &m_networkTime, &m_shareAfterPause}) {
        if (*timer != nullptr) {
            std::exchange(*timer, nullptr)->invalidate();
        }
    }
}

void TEReportTableViewController::resumeReports() {
    reportSTORAGEStatus();
    reportRAMStatus();
    resumeCPUStatus();
    resumeNETWORKStatus();
}

void TEReportTableViewController::reported(platform::Source section) {
    if (m_reported) {
        m_reported(section);
    }
}

void TEReportTableViewController::widgetPerformUpdateWithCompletionHandler(
    const std::function<void(platform::NCUpdateResult)>& handler) {
    handler(platform::NCUpdateResult::newData);
}

void TEReportTableViewController::widgetActiveDisplayModeDidChange(platform::NCWidgetDisplayMode mode,
                                                                   platform::CGSize maximumSize) {
    if (mode == platform::NCWidgetDisplayMode::compact) {
        setPreferredContentSize(maximumSize);
    } else if (mode == platform::NCWidgetDisplayMode::expanded) {
        setPreferredContentSize({maximumSize.width, expandedHeight});
    }
}

} // namespace vantor
