#pragma once

#include <Zelmar01/controls/DataAware.h>
#include <Zelmar01/controls/OwnFont.h>
#include <Zelmar01/core/Colors.h>

#include <QCheckBox>
#include <QVariant>

namespace Zelmar01 {

/// A check box with a navy text. Null is shown as a box that is neither checked nor empty; users can only
/// check and uncheck.
///
/// The text colour keeps its value as a property and is painted with as much contrast as a text needs.
class TzmCheckEdit : public TWithOwnFont<QCheckBox>
{
    Q_OBJECT
    Q_PROPERTY(
        Zelmar01::TzmCheckEdit::TAlignment Alignment READ Alignment WRITE setAlignment RESET resetAlignment)
    Q_PROPERTY(QColor Font_Color READ shownFontColor WRITE setFont_Color RESET resetFont_Color)
    Q_PROPERTY(bool Transparent READ Transparent WRITE setTransparent RESET resetTransparent)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont RESET resetParentFont)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
    Q_PROPERTY(QString ValueChecked READ ValueChecked WRITE setValueChecked)
    Q_PROPERTY(QString ValueUnchecked READ ValueUnchecked WRITE setValueUnchecked)
    Q_PROPERTY(QVariant EditValue READ EditValue WRITE setEditValue NOTIFY OnEditValueChanged
                   DESIGNABLE false STORED false)
public:
    /// Where the box stands: left of the text, right of it, or left of it with both in the middle.
    enum TAlignment { taLeftJustify, taRightJustify, taCenter };
    Q_ENUM(TAlignment)

    explicit TzmCheckEdit(QWidget *parent = nullptr);

    /// True or false, or the text that stands for it; invalid for null.
    QVariant EditValue() const;
    /// A value that stands for neither is shown as null.
    void setEditValue(const QVariant &value);

    TAlignment Alignment() const { return m_alignment; }
    void setAlignment(TAlignment alignment);
    TColor Font_Color() const { return m_fontColor; }
    void setFont_Color(TColor color);
    /// Whether what is behind shows through; else the ground is that of fields to type in.
    bool Transparent() const { return m_transparent; }
    void setTransparent(bool transparent);
    bool ReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly) { m_readOnly = readOnly; }
    /// The texts that stand for checked and unchecked, such as "O" and "N"; while they are empty, true and
    /// false do.
    QString ValueChecked() const { return m_valueChecked; }
    void setValueChecked(const QString &value) { m_valueChecked = value; }
    QString ValueUnchecked() const { return m_valueUnchecked; }
    void setValueUnchecked(const QString &value) { m_valueUnchecked = value; }

signals:
    /// The user has checked or unchecked the box.
    void OnChange();
    /// There is a new value: the user has changed it, or a host has set it.
    void OnEditValueChanged();

protected:
    void initStyleOption(QStyleOptionButton *option) const override;
    void nextCheckState() override;
    void paintEvent(QPaintEvent *event) override;

private:
    QColor shownFontColor() const { return m_fontColor.Resolved(palette()); }
    void resetAlignment() { setAlignment(taLeftJustify); }
    void resetFont_Color();
    void resetTransparent() { setTransparent(true); }

    TAlignment m_alignment = taLeftJustify;
    TColor m_fontColor;
    bool m_transparent = true, m_readOnly = false;
    QString m_valueChecked, m_valueUnchecked;
};

/// The check box on a field of any type that can hold its values.
class TzmDBCheckEdit : public TDataAware<TzmCheckEdit>
{
    Q_OBJECT
    Q_PROPERTY(bool Transparent READ Transparent WRITE setTransparent RESET leaveTransparent)
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit TzmDBCheckEdit(QWidget *parent = nullptr) : TDataAware(parent) { leaveTransparent(); }

private:
    void leaveTransparent() { setTransparent(false); }
};

} // namespace Zelmar01
