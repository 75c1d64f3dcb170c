#pragma once

#include <Zelmar01/controls/DataAware.h>
#include <Zelmar01/controls/ValueEdit.h>

namespace Zelmar01 {

/// An editor of a line of text.
class TzmEdit : public TValueEdit
{
    Q_OBJECT
public:
    explicit TzmEdit(QWidget *parent = nullptr) : TValueEdit(parent) {}

protected:
    QString textOf(const QVariant &value, bool typing) const override;
    QVariant valueOf(const QString &text) const override;
    QVariant held(const QVariant &value) const override;
};

/// The editor of a line of text on a field of any type but bytes: dates and numbers are shown and typed in
/// the form of the locale. An empty text is null.
class TzmDBEdit : public TDataAware<TzmEdit>
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit TzmDBEdit(QWidget *parent = nullptr) : TDataAware(parent) {}

protected:
    QString textOf(const QVariant &value, bool typing) const override;
    QVariant valueOf(const QString &text) const override;
    QVariant held(const QVariant &value) const override { return value; }
};

} // namespace Zelmar01
