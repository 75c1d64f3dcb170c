#pragma once

#include <Zelmar01/controls/DataAware.h>
#include <Zelmar01/controls/OwnFont.h>

#include <QPlainTextEdit>

namespace Zelmar01 {

/// An editor of a text of many lines. The Tab key leaves it.
class TzmMemo : public TWithOwnFont<QPlainTextEdit>
{
    Q_OBJECT
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont RESET resetParentFont)
    Q_PROPERTY(bool ReadOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly DESIGNABLE false STORED false)
    Q_PROPERTY(QVariant EditValue READ EditValue WRITE setEditValue NOTIFY OnEditValueChanged
                   DESIGNABLE false STORED false)
public:
    explicit TzmMemo(QWidget *parent = nullptr);

    /// The text; invalid for none.
    QVariant EditValue() const;
    void setEditValue(const QVariant &text);

signals:
    /// The user has changed the text.
    void OnChange();
    /// A host has set another text.
    void OnEditValueChanged();

private:
    bool m_showing = false;
};

/// The editor of a text of many lines on a field.
class TzmDBMemo : public TDataAware<TzmMemo>
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit TzmDBMemo(QWidget *parent = nullptr) : TDataAware(parent) {}

protected:
    bool endsByEnter() const override { return false; }
};

} // namespace Zelmar01
