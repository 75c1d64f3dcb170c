#pragma once

#include <QColor>
#include <QDir>
#include <QFont>
#include <QMetaProperty>
#include <QObject>
#include <QPixmap>
#include <QStringList>
#include <QWidget>

#include <vector>

/// The components of a form, with the pages of the page controls.
inline QList<QWidget *> Components(const QWidget *form)
{
    QList<QWidget *> found;
    for (auto *const widget : form->findChildren<QWidget *>()) {
        const auto name = widget->objectName();
        if (QByteArrayView(widget->metaObject()->className()).startsWith("Zelmar01::") && !name.isEmpty() &&
            !name.startsWith(QLatin1String("__qt")))
            found.push_back(widget);
    }
    return found;
}

/// The properties that a component of this library adds to those of Qt and that forms keep.
inline std::vector<QMetaProperty> Published(const QObject &object)
{
    std::vector<QMetaProperty> published;
    const auto *const meta = object.metaObject();
    for (int index = 0; index < meta->propertyCount(); ++index) {
        const auto property = meta->property(index);
        const bool isOurs =
            QByteArrayView(property.enclosingMetaObject()->className()).startsWith("Zelmar01::");
        if (isOurs && property.isDesignable() && property.isStored() &&
            meta->indexOfProperty(property.name()) == index)
            published.push_back(property);
    }
    return published;
}

/// A value as a text that can be compared, whoever registered its type.
inline QString Text(const QMetaProperty &property, const QObject &object)
{
    const auto value = property.read(&object);
    if (property.isFlagType())
        return QString::fromLatin1(property.enumerator().valueToKeys(value.toInt()));
    if (property.isEnumType())
        return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
    switch (property.metaType().id()) {
    case QMetaType::QColor:
        return value.value<QColor>().name(QColor::HexArgb);
    case QMetaType::QFont:
        return value.value<QFont>().toString();
    case QMetaType::QPixmap:
        return QString::number(value.value<QPixmap>().width());
    case QMetaType::QStringList:
        return value.toStringList().join(u'|');
    default:
        return value.toString();
    }
}

/// Another value than the one that a property has; none for a picture, which comes from a file.
inline QVariant Another(const QMetaProperty &property, const QObject &object)
{
    const auto value = property.read(&object);
    if (property.isFlagType() || property.isEnumType()) {
        const auto choices = property.enumerator();
        for (int choice = choices.keyCount() - 1; choice >= 0; --choice) {
            if (choices.value(choice) != value.toInt())
                return choices.value(choice);
        }
    }
    switch (property.metaType().id()) {
    case QMetaType::Bool:
        return !value.toBool();
    case QMetaType::Int:
        return value.toInt() + 1;
    case QMetaType::LongLong:
        return value.toLongLong() + 5'000'000'000;
    case QMetaType::QString:
        return QStringLiteral("Éclat & <or>");
    case QMetaType::QStringList:
        return QStringList{QStringLiteral("Bague;80;;Bague d'été"), QStringLiteral("Collier")};
    case QMetaType::QColor:
        return QColor(18, 52, 86);
    case QMetaType::QFont:
        return QFont(QStringLiteral("DejaVu Serif"), 13, QFont::Bold, true);
    default:
        return {};
    }
}
