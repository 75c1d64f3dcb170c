#pragma once

#include <Zelmar01/controls/DataAware.h>
#include <Zelmar01/controls/ValueEdit.h>

#include <QDateTime>
#include <QPointer>

class QToolButton;

namespace Zelmar01 {

class TDatePopup;

/// An editor of a date, typed or picked from a drop-down calendar (Alt+Down, F4, or a click on the arrow).
///
/// Dates are shown in the form of the locale with four digits for the year, and typed and pasted in the forms
/// that ParseDate() reads. An empty editor is null.
class tzmDateEdit : public TValueEdit
{
    Q_OBJECT
    Q_PROPERTY(Zelmar01::tzmDateEdit::TDateButtons DateButtons READ DateButtons WRITE setDateButtons RESET
                   resetDateButtons)
    Q_PROPERTY(
        Zelmar01::tzmDateEdit::TInputKind InputKind READ InputKind WRITE setInputKind RESET resetInputKind)
    Q_PROPERTY(QString EditMask READ EditMask WRITE setEditMask RESET resetEditMask)
    Q_PROPERTY(bool SaveTime READ SaveTime WRITE setSaveTime RESET resetSaveTime)
    Q_PROPERTY(bool ShowTime READ ShowTime WRITE setShowTime RESET resetShowTime)
    Q_PROPERTY(
        bool YearsInMonthList READ YearsInMonthList WRITE setYearsInMonthList RESET resetYearsInMonthList)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment RESET resetAlignment)
public:
    /// The buttons below the calendar: no date, this moment, this day.
    enum TDateButton { btnClear = 1, btnNow = 2, btnToday = 4 };
    Q_DECLARE_FLAGS(TDateButtons, TDateButton)
    Q_FLAG(TDateButtons)
    /// How dates are typed: freely, or over a mask that shows what is still missing.
    enum TInputKind { ikStandard, ikMask };
    Q_ENUM(TInputKind)

    explicit tzmDateEdit(QWidget *parent = nullptr);

    /// The date; invalid for null. Raises EConvertError when what the user has typed is none.
    QDate Date() const { return EditValue().toDate(); }
    void setDate(QDate date) { setEditValue(date); }

    TDateButtons DateButtons() const { return m_buttons; }
    void setDateButtons(TDateButtons buttons) { m_buttons = buttons; }
    TInputKind InputKind() const { return m_inputKind; }
    void setInputKind(TInputKind kind);
    /// The form of the text, such as "jj/MM/aaaa" (see DatePatternOfMask()); empty for the locale's.
    QString EditMask() const { return m_editMask; }
    void setEditMask(const QString &mask);
    /// Whether the value has a time of day; without, what is typed and picked is a day alone.
    bool SaveTime() const { return m_saveTime; }
    void setSaveTime(bool save);
    /// Whether the time of day is shown and can be typed.
    bool ShowTime() const { return m_showTime; }
    void setShowTime(bool show);
    /// Whether the calendar's list of months has those of the neighbouring years too.
    bool YearsInMonthList() const { return m_yearsInMonthList; }
    void setYearsInMonthList(bool years) { m_yearsInMonthList = years; }

    /// Opens the calendar, unless the editor is read-only.
    void DropDown();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    QString textOf(const QVariant &value, bool typing) const override;
    QVariant valueOf(const QString &text) const override;
    QVariant held(const QVariant &value) const override;
    QString typingMask() const override;
    bool takePasted(const QString &text) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString pattern() const;
    QVariant read(const QString &text) const;
    QVariant kept(const QDateTime &moment) const;
    void pick(const QDateTime &moment);
    void allowTyping();

    void resetDateButtons() { setDateButtons(presetButtons); }
    void resetInputKind() { setInputKind(ikMask); }
    void resetEditMask() { setEditMask({}); }
    void resetSaveTime() { setSaveTime(false); }
    void resetShowTime() { setShowTime(false); }
    void resetYearsInMonthList() { setYearsInMonthList(false); }
    void resetAlignment() { setAlignment(Qt::AlignLeft | Qt::AlignVCenter); }

    static constexpr TDateButtons presetButtons{7}; // all three

    QToolButton *m_arrow;
    QPointer<TDatePopup> m_popup;
    TDateButtons m_buttons = presetButtons;
    TInputKind m_inputKind = ikMask;
    QString m_editMask;
    bool m_saveTime = false, m_showTime = false, m_yearsInMonthList = false;
};
Q_DECLARE_OPERATORS_FOR_FLAGS(tzmDateEdit::TDateButtons)

/// The editor of a date on a field, which may be one of dates, of moments or of texts like "2026-02-28".
class tzmDBDateEdit : public TDataAware<tzmDateEdit>
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit tzmDBDateEdit(QWidget *parent = nullptr) : TDataAware(parent) {}
};

/// An editor of a day and a month, such as a feast day: "29/02". The year of Date() is that of the date that
/// was set before, or this one; a 29 February then lies in the last leap year up to it.
class tzmDateEditJourMois : public tzmDateEdit
{
    Q_OBJECT
    Q_PROPERTY(
        Zelmar01::tzmDateEdit::TInputKind InputKind READ InputKind WRITE setInputKind RESET presetInputKind)
    Q_PROPERTY(QString EditMask READ EditMask WRITE setEditMask RESET presetEditMask)
public:
    explicit tzmDateEditJourMois(QWidget *parent = nullptr);

private:
    void presetInputKind() { setInputKind(ikStandard); }
    void presetEditMask() { setEditMask(QStringLiteral("jj/MM")); }
};

} // namespace Zelmar01
