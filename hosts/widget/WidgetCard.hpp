// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/FormLengths.hpp"
#include "hosts/qt/RingAnimator.hpp"
#include "hosts/qt/Theme.hpp"
#include "hosts/widget/OutletBinding.hpp"
#include "platform/machine/Source.hpp"

#include <QRegion>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

class QAbstractButton;
class QLabel;
namespace Ui {
class WidgetForm;
}

namespace vantor::hosts::qt {
class Button;
class MessageLine;
} // namespace vantor::hosts::qt

namespace vantor::hosts::widget {

/// The widget's content: the form in a theme, in one of two heights, bound to a controller.
class WidgetCard final : public QWidget {
public:
    explicit WidgetCard(std::shared_ptr<TEReportTableViewController> controller, QWidget* parent = nullptr);
    ~WidgetCard() override;

    void setTheme(const qt::Theme& theme);
    [[nodiscard]] const qt::Theme& theme() const { return m_theme; }

    /// The width, in points, that every text of this language fits into, shown at the moment or not.
    [[nodiscard]] double neededWidth() const;
    /// Takes the size that the controller prefers, in points, with all that belongs to the mode.
    void setContentSize(platform::CGSize points);
    /// Whether the sections below the rings are within the content's height; `setContentSize` follows.
    void setExpanded(bool expanded);
    /// On the way from one content size to another: the upper part of what it shows, in logical pixels.
    /// Nothing in it moves, so nothing is laid out.
    void showUpper(int height);
    /// Whether "Show More" and "Show Less" are offered, and what a press does.
    void setCanExpand(bool can);
    void setToggleHandler(std::function<void()> handler) { m_toggle = std::move(handler); }

    /// Brings the widgets of all views that changed since the last call up to date.
    void flush();
    /// Marks the headings of sections whose source cannot be read, with the reason as tooltip.
    void showFailures(const std::vector<platform::SourceFailure>& failures);
    [[nodiscard]] const std::vector<platform::SourceFailure>& failures() const { return m_failures; }
    /// Calls the actions what they do by the preferences of this moment.
    void nameActions();
    /// Whether the app is there that rings and buttons ask; without it they do not invite to be pressed, and
    /// their tooltips say why. With another machine's figures they ask nobody at all.
    void setAppIsThere(bool isThere);
    void leaveTargetsAlone();
    /// As the button beside the memory's heading does.
    void openMemoryPage();
    /// A line above the rings, which are lower by `lineHeight` points from then on: whose figures these are.
    void showLine(const QString& text);
    [[nodiscard]] double lineHeight() const;
    /// Last figures of a machine that is silent are pale.
    void setPale(bool pale);
    /// A line that goes away by itself.
    void showMessage(const QString& text);

    /// Paints a soft shadow of it onto its window, `reach` logical pixels around it and nothing beneath it.
    void paintShadow(QPainter& painter, const QRegion& region, int reach) const;
    /// What it covers, for a screen that knows no translucence.
    [[nodiscard]] QRegion shape() const;

    [[nodiscard]] qt::RingAnimator& animator() { return m_animator; }
    [[nodiscard]] const std::vector<qt::RingView*>& rings() const { return m_binding.rings(); }
    [[nodiscard]] QAbstractButton& displayModeButton() const;
    /// The buttons of the four actions, refresh first, for menus.
    [[nodiscard]] std::vector<QAbstractButton*> actionButtons() const;
    [[nodiscard]] QAbstractButton& refreshButton() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void scaleForm();
    void fitButtons();
    void style(QLabel& label, double size, QFont::Weight weight, const QColor& color, double height);
    void styleLabels();
    void nameSections();
    void tellTargets();
    [[nodiscard]] std::vector<qt::Button*> targets() const;
    void showHeading(const Section& section, const platform::SourceFailure* failure);
    void showNotes();
    void showStorageTips();
    void showRingTip(qt::RingView& ring);
    void setTip(QWidget& widget, const QString& text);
    [[nodiscard]] int figureWidth() const;

    std::unique_ptr<Ui::WidgetForm> m_form;
    qt::FormLengths m_lengths;
    OutletBinding m_binding;
    qt::RingAnimator m_animator;
    qt::MessageLine* m_message;
    QLabel* m_line = nullptr; ///< absent for this machine
    qt::Theme m_theme;
    std::vector<platform::SourceFailure> m_failures;
    std::function<void()> m_toggle;
    bool m_expanded = true;
    bool m_appIsThere = true;   ///< which a press opens; until it is known
    bool m_isElsewhere = false; ///< the figures are another machine's: a press opens nothing
};

} // namespace vantor::hosts::widget
