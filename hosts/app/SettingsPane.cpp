// SPDX-License-Identifier: MIT
#include "hosts/app/SettingsPane.hpp"

#include "hosts/app/Card.hpp"
#include "hosts/qt/HostText.hpp"
#include "platform/core/PrintableText.hpp"

#include <QColorDialog>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace vantor::hosts::app {

namespace {

/// What a preference is called here: a title and a sentence.
struct Words {
    std::string_view key;
    const char* title;
    const char* sentence;
};
constexpr std::array words{
    Words{SettingsKey::isInactiveRAMHide, "app_SETINACTIVE", "app_SETINACTIVETEXT"},
    Words{SettingsKey::isReleasableSTORAGEShow, "app_SETRELEASABLE", "app_SETRELEASABLETEXT"},
    Words{SettingsKey::preventCleanRAMFromWidget, "app_SETNOCLEAN", "app_SETNOCLEANTEXT"},
    Words{SettingsKey::refreshSeconds, "app_SETSECONDS", "app_SETSECONDSTEXT"},
    Words{SettingsKey::chartcolor, "app_SETCOLOR", "app_SETCOLORTEXT"}};
static_assert(words.size() == allSettings.size());

const Words& wordsFor(const Setting& setting) {
    return *std::ranges::find(words, setting.key, &Words::key);
}

/// The path as people write it.
QString shortPath(const std::string& path) {
    const QString home = qEnvironmentVariable("HOME");
    const QString whole = QString::fromStdString(platform::printableText(path, 4096));
    return !home.isEmpty() && whole.startsWith(home + QLatin1Char('/'))
               ? QLatin1Char('~') + whole.mid(home.size())
               : whole;
}

platform::UIColor colorFrom(const QColor& color) {
    return platform::UIColor::colorWithRed(color.redF(), color.greenF(), color.blueF(), 1);
}

} // namespace

SettingsPane::SettingsPane(std::shared_ptr<ArcChartViewModel> model, std::function<void()> changed)
    : m_changed(std::move(changed)),
      m_ask([this](const QColor& now) { return askForColor(now); }),
      m_file([this](const SettingsFound& found) { display(found); }),
      m_trouble((new Text(TextSize::label))->wrapped()),
      m_setAside(new ActionButton(ButtonSize::small)),
      m_path(new Text(TextSize::label, Ink::secondary)),
      m_reset(new ActionButton(ButtonSize::small)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Grid::gap);
    m_banner = banner();
    column->addWidget(m_banner);

    auto* const preview = new Card;
    auto* const inside = new QVBoxLayout(preview);
    inside->setContentsMargins(Grid::margin, Grid::margin, Grid::margin, Grid::gap);
    auto* const head = new PageHead(std::move(model), qt::hostText("app_PREVIEW"), TextSize::title);
    head->showFigure(qt::hostText("home_USEDRAM"), {});
    head->showSentence(qt::hostText("app_PREVIEWTEXT"));
    inside->addWidget(head);
    column->addWidget(preview);

    auto* const rows = new Card;
    auto* const list = new QVBoxLayout(rows);
    list->setContentsMargins(Grid::margin, Grid::unit, Grid::margin, Grid::unit);
    list->setSpacing(0);
    for (const Setting& setting : allSettings) {
        if (&setting != &allSettings.front()) {
            list->addWidget(new Rule);
        }
        addControl(setting, *row(setting, *list, m_captions[setting.key]));
    }
    column->addWidget(rows);

    auto* const foot = new QHBoxLayout;
    foot->setContentsMargins(Grid::margin, 0, Grid::margin, 0);
    foot->addWidget(m_path);
    foot->addStretch();
    foot->addWidget(m_reset);
    m_path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_reset->setText(qt::hostText("app_RESETALL"));
    m_reset->setOnSelection(true);
    connect(m_reset, &QAbstractButton::clicked, this, [this] {
        std::vector<SettingChange> changes;
        changes.reserve(std::size(allSettings));
        for (const Setting& setting : allSettings) {
            changes.push_back({&setting, {}});
        }
        m_file.write(std::move(changes));
    });
    column->addLayout(foot);
    column->addStretch();
}

/// What is wrong with the file, and the way out where there is one.
QWidget* SettingsPane::banner() {
    auto* const card = new Card;
    auto* const line = new QHBoxLayout(card);
    line->setContentsMargins(Grid::margin, Grid::gap, Grid::margin, Grid::gap);
    line->setSpacing(Grid::gap);
    line->addWidget(m_trouble, 1);
    line->addWidget(m_setAside);
    m_setAside->setText(qt::hostText("app_SETASIDE"));
    connect(m_setAside, &QAbstractButton::clicked, this, [this] { m_file.write({}, BrokenStore::setAside); });
    card->hide();
    return card;
}

QBoxLayout* SettingsPane::row(const Setting& setting, QBoxLayout& card, Text*& caption) {
    auto* const texts = new QVBoxLayout;
    texts->setContentsMargins(0, 10, 0, 10);
    texts->setSpacing(1);
    const Words& said = wordsFor(setting);
    auto* const title = new Text(TextSize::body);
    title->setText(qt::hostText(said.title));
    caption = (new Text(TextSize::caption, Ink::secondary))->wrapped();
    caption->setText(qt::hostText(said.sentence));
    auto* const when = (new Text(TextSize::caption, Ink::secondary))->wrapped();
    when->setText(qt::hostText(setting.applies == atNextReport ? "app_ATNEXTREPORT" : "app_ATNEXTSTART"));
    texts->addWidget(title);
    texts->addWidget(caption);
    texts->addWidget(when);
    auto* const line = new QHBoxLayout;
    line->setSpacing(Grid::gap);
    line->addLayout(texts, 1);
    card.addLayout(line);
    return line;
}

void SettingsPane::addControl(const Setting& setting, QBoxLayout& line) {
    if (setting.kind == SettingKind::seconds) {
        addSeconds(setting, line);
    } else if (setting.kind == SettingKind::color) {
        addColor(setting, line);
    } else {
        auto* const flag = new Switch(qt::hostText(wordsFor(setting).title));
        flag->setAccessibleDescription(qt::hostText(wordsFor(setting).sentence));
        connect(flag, &QAbstractButton::clicked, this, [this, &setting](bool on) { change(setting, on); });
        m_flags[setting.key] = flag;
        line.addWidget(flag);
    }
}

void SettingsPane::addSeconds(const Setting& setting, QBoxLayout& line) {
    m_seconds = new Field(qt::hostText(wordsFor(setting).title));
    m_seconds->setMaxLength(20);
    auto* const unit = new Text(TextSize::label, Ink::secondary);
    unit->setText(qt::hostText("app_SECONDSUNIT"));
    connect(m_seconds, &QLineEdit::editingFinished, this, [this] { takeSeconds(); });
    connect(m_seconds, &QLineEdit::textEdited, this, [this] { m_seconds->setRefused(false); });
    line.addWidget(m_seconds);
    line.addWidget(unit);
}

void SettingsPane::addColor(const Setting& setting, QBoxLayout& line) {
    m_color = new ColorButton(qt::hostText("app_CHOOSECOLOR"));
    m_automatic = new ActionButton(ButtonSize::small);
    m_automatic->setText(qt::hostText("app_AUTOMATIC"));
    connect(m_color, &QAbstractButton::clicked, this, [this] { chooseColor(); });
    connect(m_automatic, &QAbstractButton::clicked, this, [this, &setting] { change(setting, {}); });
    line.addWidget(m_color);
    line.addWidget(m_automatic);
}

void SettingsPane::change(const Setting& setting, const SettingValue& value) {
    m_file.write({{&setting, value}});
}

/// A comma counts as a point, which is what the file has. What is out of range is not written.
void SettingsPane::takeSeconds() {
    const Setting& setting = *settingNamed(SettingsKey::refreshSeconds);
    const auto state = std::ranges::find(m_states, &setting, &SettingState::setting);
    const std::string text =
        m_seconds->text().trimmed().replace(QLatin1Char(','), QLatin1Char('.')).toStdString();
    if (state != m_states.end() && text == state->text() && !m_seconds->isRefused()) {
        return;
    }
    const std::optional<SettingValue> value = parseSetting(setting, text);
    m_seconds->setRefused(!value);
    m_captions.at(setting.key)
        ->display(qt::hostText(value ? wordsFor(setting).sentence : "app_SECONDSREFUSED"));
    if (value) {
        change(setting, *value);
    }
}

void SettingsPane::chooseColor() {
    const Setting& setting = *settingNamed(SettingsKey::chartcolor);
    const auto state = std::ranges::find(m_states, &setting, &SettingState::setting);
    QColor now(0x34, 0xC7, 0x59);
    if (state != m_states.end()) {
        if (const auto* const own = std::get_if<platform::UIColor>(&state->value)) {
            now = qt::painted(*own, m_look.theme.appearance);
        }
    }
    if (const std::optional<QColor> chosen = m_ask(now)) {
        change(setting, colorFrom(*chosen));
    }
}

std::optional<QColor> SettingsPane::askForColor(const QColor& now) {
    QColorDialog dialog(now, this);
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    dialog.setWindowTitle(qt::hostText("app_CHOOSECOLOR"));
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.currentColor()) : std::nullopt;
}

void SettingsPane::showState(const SettingState& state) {
    if (const auto flag = m_flags.find(state.setting->key); flag != m_flags.end()) {
        const bool* const on = std::get_if<bool>(&state.value);
        flag->second->setChecked(on != nullptr && *on);
    } else if (state.setting->kind == SettingKind::seconds) {
        if (!m_seconds->hasFocus() || !m_seconds->isModified()) {
            m_seconds->setText(QString::fromStdString(state.text()));
        }
    } else {
        const auto* const own = std::get_if<platform::UIColor>(&state.value);
        m_color->setColor(own != nullptr ? std::optional(qt::painted(*own, m_look.theme.appearance))
                                         : std::nullopt);
        m_automatic->setRole(own == nullptr ? ButtonRole::chosen : ButtonRole::usual);
    }
}

/// What is wrong with a stored value, in the command's words; usually what the preference does.
void SettingsPane::showCaption(const SettingState& state) {
    if (state.setting->kind == SettingKind::seconds && m_seconds->isRefused()) {
        return; // that tells the range
    }
    m_captions.at(state.setting->key)
        ->display(state.problem.empty()
                      ? qt::hostText(wordsFor(*state.setting).sentence)
                      : QString::fromStdString(std::string(state.setting->key) + ": " + state.problem));
}

void SettingsPane::display(const SettingsFound& found) {
    const bool differs = found.states != m_states;
    m_states = found.states;
    for (const SettingState& state : m_states) {
        showState(state);
        showCaption(state);
    }
    m_path->display(shortPath(found.path));
    QString trouble;
    if (found.problem || found.failure) {
        trouble = QString::fromStdString(
            platform::printableText(found.problem ? *found.problem : *found.failure, 4096));
        trouble = qt::hostText(found.couldBeSetAside ? "app_BROKENFILE" : "app_NOTWRITTEN", "reason",
                               trouble.toStdString());
    } else if (!found.setAside.empty()) {
        trouble = qt::hostText("app_KEPTAS", "path", shortPath(found.setAside).toStdString());
    }
    m_trouble->display(trouble);
    m_setAside->setVisible(found.couldBeSetAside);
    m_banner->setVisible(!trouble.isEmpty());
    if (differs && m_changed) {
        m_changed();
    }
}

void SettingsPane::setLook(const Look& look) {
    constexpr double resetWide = 104, automaticWide = 120; // points
    m_look = look;
    m_reset->setMinimumWidth(look.pixels(resetWide));
    m_automatic->setMinimumWidth(look.pixels(automaticWide));
    for (const SettingState& state : m_states) {
        showState(state);
    }
}

} // namespace vantor::hosts::app
