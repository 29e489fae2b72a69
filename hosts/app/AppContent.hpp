// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/MemoryPane.hpp"
#include "hosts/app/ProcessorPane.hpp"
#include "hosts/app/Sampler.hpp"
#include "hosts/app/SettingsPane.hpp"
#include "hosts/app/Sidebar.hpp"
#include "hosts/app/StoragePane.hpp"
#include "hosts/qt/FormLengths.hpp"
#include "hosts/qt/RingAnimator.hpp"

#include <QScrollArea>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace vantor::hosts::app {

/// All that is in the window: the pages, the way to them, and what they show. Knows of no window, so that a
/// picture in a file is made by the same code.
class AppContent final : public QWidget, public Looked {
    Q_OBJECT

public:
    /// `demo`: a made-up machine, whose time goes by samples.
    explicit AppContent(bool demo);
    ~AppContent() override;

    void setPage(PageKind page);
    [[nodiscard]] PageKind page() const { return m_page; }
    /// Called when another page is shown.
    void setPageHandler(std::function<void(PageKind)> handler) { m_pageChanged = std::move(handler); }

    /// A link wants memory freed.
    void freeMemoryByLink();
    /// Looks at the machine again; the figures come in a later turn of the main loop.
    void refresh();
    /// A pause begins: what comes after it is not one interval with what was before.
    void pause();
    /// Whether somebody can see it: only then the preference file is followed.
    void setSeen(bool seen);
    /// Whether the shown page has all that it shows.
    [[nodiscard]] bool isComplete() const;
    /// How tall the window would have to be to show the whole page, in pixels.
    [[nodiscard]] int tallness() const;
    /// How many looks at the machine have been shown.
    [[nodiscard]] int samples() const { return m_samples; }

    /// Told from the outermost widget on: colours, texts and lengths.
    void setLook(const Look& look) override;
    [[nodiscard]] const Look& look() const { return m_look; }
    [[nodiscard]] qt::RingAnimator& animator() { return *m_animator; }
    [[nodiscard]] Sidebar& sidebar() { return *m_sidebar; }
    [[nodiscard]] MemoryPane& memory() { return *m_memory; }
    [[nodiscard]] StoragePane& storage() { return *m_storage; }
    [[nodiscard]] ProcessorPane& processor() { return *m_processor; }
    [[nodiscard]] SettingsPane& settings() { return *m_settings; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void display(const Sample& sample);
    void showRing(PageKind page, const std::optional<double>& fraction);
    void followPage();
    void endApplication(const UseRow& row);
    void fitColumn();
    void fitRoom();
    [[nodiscard]] QWidget* pane(PageKind page) const { return m_panes.at(static_cast<std::size_t>(page)); }

    const bool m_demo;
    Sidebar::Models m_models;
    Sampler m_sampler;
    Look m_look;
    PageKind m_page = PageKind::memory;
    std::function<void(PageKind)> m_pageChanged;
    Sidebar* m_sidebar;
    QScrollArea* m_scroll;
    QWidget* m_column;
    MemoryPane* m_memory;
    StoragePane* m_storage;
    ProcessorPane* m_processor;
    SettingsPane* m_settings;
    std::array<QWidget*, pageCount> m_panes{};
    std::array<std::vector<Ring*>, pageCount> m_rings; ///< that show a page's figure
    std::optional<qt::FormLengths> m_lengths;
    std::unique_ptr<qt::RingAnimator> m_animator;
    int m_samples = 0;
    bool m_isComplete = false;
    bool m_isSeen = false;
};

} // namespace vantor::hosts::app
