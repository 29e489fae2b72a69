// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/FreeUpRow.hpp"
#include "hosts/app/PageHead.hpp"
#include "hosts/app/PartsBar.hpp"
#include "hosts/app/Sampler.hpp"
#include "hosts/app/UseList.hpp"
#include "pages/MemoryPage.hpp"

#include <QWidget>

namespace vantor::hosts::app {

/// The memory page: what the ring is made of, and which applications hold it.
class MemoryPane final : public QWidget {
public:
    /// `changed` hears that memory was freed; `pace` is the actions' clock.
    MemoryPane(std::shared_ptr<ArcChartViewModel> model, bool useTheme, std::function<void()> changed,
               Pace pace);

    /// `behind`: what is behind the applications that are unfolded.
    void display(const MemoryPage& page, const Unfolded& behind);
    [[nodiscard]] PageHead& head() { return *m_head; }
    [[nodiscard]] PartsBar& bar() { return *m_bar; }
    [[nodiscard]] FreeUpRow& freeUp() { return *m_freeUp; }
    [[nodiscard]] UseList& list() { return *m_list; }

private:
    void showSwap(const MemoryPage& page);
    void showApplications(const MemoryPage& page, const Unfolded& behind);

    PageHead* m_head;
    Text* m_swap;
    Text* m_swapFigure;
    PartsBar* m_bar;
    FreeUpRow* m_freeUp;
    UseList* m_list;
};

} // namespace vantor::hosts::app
