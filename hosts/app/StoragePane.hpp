// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/PageHead.hpp"
#include "hosts/app/PartsBar.hpp"
#include "hosts/app/Sheet.hpp"
#include "hosts/app/StorageRow.hpp"
#include "hosts/app/StorageWork.hpp"
#include "pages/StoragePage.hpp"

#include <QBoxLayout>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <utility>
#include <vector>

namespace vantor::hosts::app {

/// The storage page: what the ring is made of, and what could be given back. The list of a deletion is shown
/// before it, and is what is deleted.
class StoragePane final : public QWidget, public Looked {
    Q_OBJECT

public:
    /// `changed` hears that something was deleted. `now` tells the time, in seconds since 1970.
    StoragePane(std::shared_ptr<ArcChartViewModel> model, std::function<void()> changed,
                std::function<std::int64_t()> now);

    /// Counts while it can be seen; a count that is not finished by then is given up.
    void follow(bool on);
    void display(const StoragePage& page);
    [[nodiscard]] PageHead& head() { return *m_head; }
    [[nodiscard]] bool isCounted() const { return m_isCounted; }

    [[nodiscard]] PartsBar& bar() { return *m_bar; }
    [[nodiscard]] ActionButton& releaseButton() { return *m_release; }
    [[nodiscard]] ActionButton* trashButton() const { return m_trash; }
    [[nodiscard]] const Text& result() const { return *m_result; }
    [[nodiscard]] Sheet* sheet() const { return m_sheet; }
    void setLook(const Look& look) override;

private:
    void displayHead(const VolumeFigures& figures);
    void addTrash(const StoragePage& page);
    void addCache(const CacheRow& row);
    void addSystem(const platform::SystemCache& cache);
    void addRow(StorageRow* row);
    void orderKeys();
    void showSelection();
    [[nodiscard]] std::vector<platform::CacheItem> selected() const;
    void askForTrash();
    void askForCaches();
    void ask(const QString& title, const Listing& listing);
    void runListed(const Listing& listing);

    std::function<void()> m_changed;
    StorageWork m_work;
    PageHead* m_head;
    PartsBar* m_bar;
    QBoxLayout* m_rows;
    QWidget* m_foot; ///< what was done, and the button; away where neither is there
    Text* m_result;
    ActionButton* m_release;
    ActionButton* m_trash = nullptr;
    std::vector<std::pair<Tick*, platform::CacheItem>> m_ticks;
    QPointer<Sheet> m_sheet;
    Look m_look;
    bool m_isCounted = false;
    bool m_hasResult = false;
};

} // namespace vantor::hosts::app
