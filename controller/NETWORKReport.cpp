// SPDX-License-Identifier: MIT
#include "controller/ByteText.hpp"
#include "controller/Outlet.hpp"
#include "controller/ReportSteps.hpp"
#include "controller/TEReportTableViewController.hpp"
#include "platform/machine/Machine.hpp"

namespace vantor {

namespace {

std::uint64_t sum(std::uint64_t wifi, std::uint64_t wirelessWan) {
    return platform::checkedAdd(wifi, wirelessWan, "the sum of the traffic counters overflows");
}

std::uint64_t sentBytes(const DataUsageInfo& usage) {
    return sum(usage.wifiSent, usage.wirelessWanDataSent);
}

std::uint64_t receivedBytes(const DataUsageInfo& usage) {
    return sum(usage.wifiReceived, usage.wirelessWanDataReceived);
}

/// What programs that read reports want: the interface entries have 32 bits and begin anywhere.
platform::NetworkTotals totalsOf(const DataUsageInfo& usage) {
    return platform::currentMachine().networkTotals().value_or(platform::NetworkTotals{
        {usage.wifiReceived, usage.wifiSent}, {usage.wirelessWanDataReceived, usage.wirelessWanDataSent}});
}

} // namespace

std::pair<NetworkFigures, NetworkTexts> TEReportTableViewController::sampleNETWORK() const {
    NetworkFigures figures;
    figures.usage = NetworkStatus::getDataUsage();
    figures.totals = totalsOf(figures.usage);
    figures.sentDelta = distance(m_oldDataSent.load(), sentBytes(figures.usage));
    figures.receivedDelta = distance(m_oldDataReceived.load(), receivedBytes(figures.usage));
    return {figures, {trafficText(figures.sentDelta) + "/s", trafficText(figures.receivedDelta) + "/s"}};
}

void TEReportTableViewController::reportNETWORKStatus() {
    report([controller = self()] { return controller->sampleNETWORK(); },
           [controller = self()](const std::pair<NetworkFigures, NetworkTexts>& sampled) {
               controller->displayNETWORK(sampled.first, sampled.second);
           });
}

void TEReportTableViewController::resumeNETWORKStatus() {
    report([] { return NetworkStatus::getDataUsage(); },
           [controller = self()](const DataUsageInfo& usage) { controller->keepCounters(usage); });
}

void TEReportTableViewController::displayNETWORK(const NetworkFigures& figures, const NetworkTexts& texts) {
    m_records.network = figures;
    m_records.network->isFirst = m_isFirstNetworkDataLoad;
    if (m_isFirstNetworkDataLoad) {
        m_isFirstNetworkDataLoad = false; // its delta counts from 0, not from a second ago
    } else {
        outlet(*this, dataSentNETWORKLabel)->setText(texts.sent);
        outlet(*this, dataReceivedNETWORKLabel)->setText(texts.received);
    }
    keepCounters(figures.usage);
    reported(platform::Source::network);
}

void TEReportTableViewController::keepCounters(const DataUsageInfo& usage) {
    m_oldDataSent = sentBytes(usage);
    m_oldDataReceived = receivedBytes(usage);
}

} // namespace vantor
