// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/PageHead.hpp"
#include "hosts/app/Sampler.hpp"
#include "hosts/app/Sparkline.hpp"
#include "hosts/app/UseList.hpp"
#include "pages/ProcessorPage.hpp"

#include <QGridLayout>
#include <QWidget>
#include <array>

namespace vantor::hosts::app {

/// The processor page: how busy the processors are and were, and with what.
class ProcessorPane final : public QWidget {
public:
    ProcessorPane(std::shared_ptr<ArcChartViewModel> model, bool useTheme);

    /// The shares of the last minute, which are there before the page is.
    void displayMinute(const std::vector<CpuUsage>& minute) { m_sparkline->setMinute(minute); }
    /// What is known of the page before there is an interval; how busy the processors are is the last of the
    /// minute, where there is one.
    void displayStart(const ProcessorPage& page, const std::vector<CpuUsage>& minute);
    /// `behind`: what is behind the applications that are unfolded.
    void display(const ProcessorPage& page, const Unfolded& behind);
    [[nodiscard]] PageHead& head() { return *m_head; }
    [[nodiscard]] UseList& list() { return *m_list; }

private:
    /// Three averages in a row, below what they are of.
    struct Averages {
        std::array<Text*, 3> spans{};
        Text* name = nullptr;
        std::array<Text*, 3> figures{};
    };
    Averages addAverages(QGridLayout& grid, const char* name, const std::array<const char*, 3>& spans);
    static void displayAverages(const Averages& averages, const std::optional<std::array<QString, 3>>& texts);
    void displayBusy(double percent, std::size_t processors);
    void displayState(const ProcessorPage& page);
    void displayApplications(const ProcessorPage& page, const Unfolded& behind);

    PageHead* m_head;
    Averages m_load;
    Averages m_pressure;
    Sparkline* m_sparkline;
    ProcessorBars* m_bars;
    UseList* m_list;
};

} // namespace vantor::hosts::app
