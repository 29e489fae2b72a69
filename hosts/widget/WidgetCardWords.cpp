// SPDX-License-Identifier: MIT
/// What the card says beside its figures: names of actions, headings, notes and tooltips.
#include "controller/ByteText.hpp"
#include "controller/SectionNote.hpp"
#include "hosts/qt/Buttons.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/RingView.hpp"
#include "hosts/widget/FormWidget.hpp"
#include "hosts/widget/WidgetCard.hpp"
#include "platform/core/PrintableText.hpp"
#include "ui_WidgetForm.h"

#include <QCursor>
#include <QTextDocument>
#include <QToolTip>
#include <utility>

namespace vantor::hosts::widget {

namespace {

/// A reason may hold a folder's name, and a tip that looks like markup is taken for it, pictures and all.
QString literal(const std::string& reason) {
    const QString text = QString::fromStdString(platform::printableText(reason, 4096));
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace

void WidgetCard::nameActions() {
    for (const Section& section : sections) {
        const QString name = qt::hostText(actionCaptionKey(section));
        auto& button = formWidget<QAbstractButton>(*this, section.action.name);
        if (button.text() != name) {
            button.setText(name);
        }
        if (section.chart) {
            auto& ring = formWidget<QAbstractButton>(*this, section.chart->name);
            ring.setText(name);
        }
    }
}

std::vector<qt::Button*> WidgetCard::targets() const {
    return {m_form->memoryTotal, m_form->cleanRam, m_form->openApp, m_form->showCpuChart};
}

void WidgetCard::setAppIsThere(bool isThere) {
    if (m_isElsewhere || isThere == std::exchange(m_appIsThere, isThere)) {
        return;
    }
    for (qt::RingView* ring : m_binding.rings()) {
        ring->setCursor(isThere ? Qt::PointingHandCursor : Qt::ArrowCursor);
    }
    for (qt::Button* target : targets()) {
        target->setQuiet(!isThere);
    }
    tellTargets();
}

void WidgetCard::leaveTargetsAlone() {
    setAppIsThere(false);
    m_isElsewhere = true;
    tellTargets();
}

/// The tooltips say what a press does: a pill says so itself.
void WidgetCard::tellTargets() {
    for (qt::Button* target : targets()) {
        const QString name = target == m_form->cleanRam ? QString() : target->text();
        setTip(*target, m_isElsewhere ? QString() : m_appIsThere ? name : qt::hostText("host_NOAPP"));
    }
}

void WidgetCard::nameSections() {
    nameActions();
    for (const Section& section : sections) {
        showHeading(section, nullptr);
    }
    m_form->memoryTotal->setText(qt::hostText("host_SHOWRAM"));
    m_form->memoryTotal->setCaption(qt::hostText("host_SHOW"));
    m_form->openApp->setCaption(qt::hostText("host_SHOW"));
    m_form->showCpuChart->setCaption(qt::hostText("host_CHART"));
    setTip(*m_form->manualInfoRefresh, m_form->manualInfoRefresh->text());
    tellTargets();
}

/// What no row tells: how much RAM there is, and how much of the processor's time went to programs that asked
/// for little.
void WidgetCard::showNotes() {
    const ReportRecords& records = m_binding.controller().records();
    const QString total = QString::fromStdString(sectionNote(platform::Source::memory, records));
    if (!total.isEmpty() && total != m_form->memoryTotal->caption()) {
        m_form->memoryTotal->setCaption(total);
        m_form->memoryTotal->setFixedSize(m_form->memoryTotal->sizeHint());
    }
    m_form->lowPriorityShare->setText(
        QString::fromStdString(sectionNote(platform::Source::processor, records)));
    // A tooltip that is open tells the figures of now, as the ring below it does.
    for (qt::RingView* const ring :
         {m_form->progressRAMView, m_form->progressSTORAGEView, m_form->progressCPUView}) {
        const QString shown = QToolTip::text();
        if (shown.isEmpty() || shown != ring->toolTip()) {
            continue;
        }
        showRingTip(*ring);
        if (ring->toolTip() != shown) {
            QToolTip::showText(QCursor::pos(), ring->toolTip(), ring);
        }
    }
}

/// Free space counts what could be released, and the total leaves out what is kept back for the system; the
/// tooltips say how much that is.
void WidgetCard::showStorageTips() {
    const StorageFigures storage = m_binding.controller().records().storage.value_or(StorageFigures{});
    const auto tip = [](std::string_view key, std::int64_t bytes) {
        return bytes > 0 ? qt::hostText(key, "size", storageText(bytes)) : QString();
    };
    for (QLabel* label : {m_form->freeSTORAGETitleLabel, m_form->freeSTORAGELabel}) {
        setTip(*label, tip("host_RELEASABLETIP", storage.releasable));
    }
    for (QLabel* label : {m_form->totalSTORAGETitleLabel, m_form->totalSTORAGELabel}) {
        setTip(*label, tip("host_RESERVEDTIP", storage.reserved));
    }
}

/// The ring in figures, and what a press does.
void WidgetCard::showRingTip(qt::RingView& ring) {
    const ReportRecords& records = m_binding.controller().records();
    QStringList lines{qt::valueText(ring.caption().toStdString(), ring.percentage().toStdString())};
    const auto partOf = [](const std::string& part, const std::string& whole) {
        return QString::fromStdString(part) + QStringLiteral(" · ") +
               qt::hostText("host_OFTOTAL", "size", whole);
    };
    if (&ring == m_form->progressRAMView && records.memory && !records.memory->empty()) {
        lines << partOf(memoryText(records.memory->at("used")), memoryText(records.memory->at("total")));
    } else if (&ring == m_form->progressSTORAGEView && records.storage) {
        lines << partOf(storageText(records.storage->used), storageText(records.storage->total));
    } else if (&ring == m_form->progressCPUView && !m_form->lowPriorityShare->text().isEmpty()) {
        lines << m_form->lowPriorityShare->text();
    }
    if (!m_isElsewhere) {
        lines << (m_appIsThere ? ring.text() : qt::hostText("host_NOAPP"));
    }
    setTip(ring, lines.join(QLatin1Char('\n')));
}

void WidgetCard::setTip(QWidget& widget, const QString& text) {
    if (widget.toolTip() != text) {
        widget.setToolTip(text);
    }
}

void WidgetCard::showHeading(const Section& section, const platform::SourceFailure* failure) {
    auto& heading = formWidget<QLabel>(*this, section.heading);
    const QString name = qt::hostText(section.headingKey);
    heading.setText(failure == nullptr ? name
                                       : name + QStringLiteral(" · ") + qt::hostText("host_UNAVAILABLE"));
    setTip(heading, failure == nullptr ? QString() : literal(failure->reason));
    // The longer heading takes the room of the button beside it; the ring still leads to the same page.
    using platform::Source;
    QWidget* const beside = section.source == Source::memory      ? m_form->memoryTotal
                            : section.source == Source::storage   ? m_form->openApp
                            : section.source == Source::processor ? m_form->showCpuChart
                                                                  : nullptr;
    if (beside != nullptr) {
        beside->setVisible(failure == nullptr);
    }
}

} // namespace vantor::hosts::widget
