// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/ActionButton.hpp"
#include "hosts/app/Controls.hpp"
#include "hosts/app/PageHead.hpp"
#include "hosts/app/SettingsFile.hpp"

#include <QBoxLayout>
#include <QWidget>
#include <functional>
#include <map>

namespace vantor::hosts::app {

/// The settings page: what the widget goes by, with a ring that shows it at work.
class SettingsPane final : public QWidget, public Looked {
    Q_OBJECT

public:
    /// `model` is what the ring of the widget shows. `changed` hears that the file holds other values.
    SettingsPane(std::shared_ptr<ArcChartViewModel> model, std::function<void()> changed);

    /// Reads the file and follows its changes while the page is shown.
    void follow(bool on) { m_file.follow(on); }
    void display(const SettingsFound& found);

    [[nodiscard]] Switch& flag(std::string_view key) { return *m_flags.at(key); }
    [[nodiscard]] Field& seconds() { return *m_seconds; }
    [[nodiscard]] ActionButton& automatic() { return *m_automatic; }
    [[nodiscard]] ActionButton& resetButton() { return *m_reset; }
    [[nodiscard]] ActionButton& setAsideButton() { return *m_setAside; }
    [[nodiscard]] const Text& trouble() const { return *m_trouble; }
    /// What asks for a colour; by default a dialog.
    void setColorAsker(std::function<std::optional<QColor>(const QColor&)> ask) { m_ask = std::move(ask); }
    [[nodiscard]] ColorButton& colorButton() { return *m_color; }

    void setLook(const Look& look) override;

private:
    QWidget* banner();
    QBoxLayout* row(const Setting& setting, QBoxLayout& card, Text*& caption);
    void addControl(const Setting& setting, QBoxLayout& line);
    void addSeconds(const Setting& setting, QBoxLayout& line);
    void addColor(const Setting& setting, QBoxLayout& line);
    void change(const Setting& setting, const SettingValue& value);
    void takeSeconds();
    void chooseColor();
    [[nodiscard]] std::optional<QColor> askForColor(const QColor& now);
    void showState(const SettingState& state);
    void showCaption(const SettingState& state);

    std::function<void()> m_changed;
    std::function<std::optional<QColor>(const QColor&)> m_ask;
    SettingsFile m_file;
    std::map<std::string_view, Switch*> m_flags;
    std::map<std::string_view, Text*> m_captions;
    Field* m_seconds = nullptr;
    ColorButton* m_color = nullptr;
    ActionButton* m_automatic = nullptr;
    QWidget* m_banner;
    Text* m_trouble;
    ActionButton* m_setAside;
    Text* m_path;
    ActionButton* m_reset;
    std::vector<SettingState> m_states;
    Look m_look;
};

} // namespace vantor::hosts::app
