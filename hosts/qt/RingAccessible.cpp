// SPDX-License-Identifier: MIT
#include "hosts/qt/RingAccessible.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/qt/RingView.hpp"

#include <QAccessibleWidget>

namespace vantor::hosts::qt {

namespace {

/// A ring with a caption says that; one that stands beside its words is told its name, or has none.
QString spokenName(const RingView& ring) {
    const QString name = ring.caption().isEmpty() ? ring.accessibleName() : ring.caption();
    return name.isEmpty() ? QString() : valueText(name.toStdString(), ring.percentage().toStdString());
}

bool canBePressed(const RingView& ring) {
    return ring.focusPolicy() != Qt::NoFocus;
}

QAccessible::Role roleOf(const RingView& ring) {
    return canBePressed(ring)           ? QAccessible::Button
           : spokenName(ring).isEmpty() ? QAccessible::Graphic
                                        : QAccessible::ProgressBar;
}

class RingAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit RingAccessible(RingView& ring) : QAccessibleWidget(&ring, roleOf(ring)), m_ring(ring) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        switch (kind) {
        case QAccessible::Name:
            return spokenName(m_ring);
        case QAccessible::Description:
            return m_ring.text();
        case QAccessible::Value:
            return m_ring.percentage();
        default:
            return QAccessibleWidget::text(kind);
        }
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QStringList actionNames() const override {
        return canBePressed(m_ring) ? QStringList{pressAction(), setFocusAction()} : QStringList();
    }
    void doAction(const QString& name) override {
        if (name == pressAction()) {
            m_ring.animateClick();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

    [[nodiscard]] QVariant currentValue() const override {
        return m_ring.percentage().remove(QLatin1Char('%')).toDouble();
    }
    void setCurrentValue(const QVariant& /*value*/) override {} // a ring shows, it is not set
    [[nodiscard]] QVariant maximumValue() const override { return 100.0; }
    [[nodiscard]] QVariant minimumValue() const override { return 0.0; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1.0; }

private:
    RingView& m_ring;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    if (auto* const ring = dynamic_cast<RingView*>(object)) {
        return new RingAccessible(*ring); // the accessibility cache owns it
    }
    // To the toolkit a plain window is a group of things, which screen readers pass over.
    auto* const widget = qobject_cast<QWidget*>(object);
    const bool isPlainWindow = widget != nullptr && widget->windowType() == Qt::Window &&
                               widget->metaObject() == &QWidget::staticMetaObject;
    return isPlainWindow ? new QAccessibleWidget(widget, QAccessible::Window) : nullptr;
}

} // namespace

void installRingAccessibility() {
    QAccessible::installFactory(makeInterface); // keeps one entry, however often it is called
}

} // namespace vantor::hosts::qt
