#include "ControlsAccessible.h"

#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/controls/zmGauges.h>
#include <Zelmar01/controls/zmImage.h>
#include <Zelmar01/core/ExceptionDisplay.h>

#include <QAccessibleWidget>
#include <QCoreApplication>

namespace Zelmar01 {

namespace {

class TGaugeInterface : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit TGaugeInterface(TzmGauge *gauge) : QAccessibleWidget(gauge, QAccessible::ProgressBar) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return QString::number(gauge()->GetPercentDone()) + QLatin1Char('%');
        const auto text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty()
                   ? QCoreApplication::translate("Zelmar01", "Progression")
                   : text;
    }
    QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return gauge()->Progress(); }
    void setCurrentValue(const QVariant &) override {}
    QVariant minimumValue() const override { return gauge()->Min(); }
    QVariant maximumValue() const override { return gauge()->Max(); }
    QVariant minimumStepSize() const override { return 1; }

private:
    TzmGauge *gauge() const { return static_cast<TzmGauge *>(widget()); }
};

class TLabelInterface : public QAccessibleWidget
{
public:
    explicit TLabelInterface(TCustomLabel *label)
        : QAccessibleWidget(label,
                            qobject_cast<TLabelURL *>(label) ? QAccessible::Link : QAccessible::StaticText)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        const auto *link = qobject_cast<const TLabelURL *>(widget());
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty())
            return label()->PlainCaption();
        if (kind == QAccessible::Value && link)
            return link->Address();
        return QAccessibleWidget::text(kind);
    }
    // A link is its own buddy, for its key; it labels nothing.
    QList<std::pair<QAccessibleInterface *, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override
    {
        auto found = QAccessibleWidget::relations(match);
        found.removeIf([this](const auto &one) { return one.first && one.first->object() == object(); });
        return found;
    }
    QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.readOnly = true;
        state.linked = role() == QAccessible::Link;
        return state;
    }
    QStringList actionNames() const override
    {
        auto names = QAccessibleWidget::actionNames();
        if (role() == QAccessible::Link && widget()->isEnabled())
            names.prepend(pressAction());
        return names;
    }
    void doAction(const QString &action) override
    {
        auto *link = qobject_cast<TLabelURL *>(widget());
        if (link && link->isEnabled() && action == pressAction())
            ShowingExceptions([link] { link->Click(); });
        else
            QAccessibleWidget::doAction(action);
    }

private:
    TCustomLabel *label() const { return static_cast<TCustomLabel *>(widget()); }
};

class TImageInterface : public QAccessibleWidget, public QAccessibleImageInterface
{
public:
    explicit TImageInterface(TzmImage *image) : QAccessibleWidget(image, QAccessible::Graphic) {}

    QString text(QAccessible::Text kind) const override
    {
        const auto text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? QCoreApplication::translate("Zelmar01", "Image")
                                                           : text;
    }
    QAccessible::State state() const override
    {
        auto state = QAccessibleWidget::state();
        state.readOnly = image()->ReadOnly();
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ImageInterface ? static_cast<QAccessibleImageInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString imageDescription() const override { return image()->accessibleDescription(); }
    QSize imageSize() const override { return image()->contentsRect().size(); }
    QPoint imagePosition() const override { return image()->mapToGlobal(image()->contentsRect().topLeft()); }

private:
    TzmImage *image() const { return static_cast<TzmImage *>(widget()); }
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (auto *gauge = qobject_cast<TzmGauge *>(object))
        return new TGaugeInterface(gauge);
    if (auto *image = qobject_cast<TzmImage *>(object))
        return new TImageInterface(image);
    auto *label = qobject_cast<TCustomLabel *>(object);
    return label ? new TLabelInterface(label) : nullptr;
}

} // namespace

void InstallControlsAccessibility()
{
    // Installing a factory twice changes nothing.
    QAccessible::installFactory(makeInterface);
}

} // namespace Zelmar01
