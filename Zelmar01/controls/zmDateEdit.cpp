#include <Zelmar01/controls/zmDateEdit.h>

#include <Zelmar01/controls/DatePopup.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/data/binding/DateText.h>

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolButton>
#include <QValidator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr QStringView timePattern = u" HH:mm";

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Lets nothing be typed that no date in a pattern begins with.
class TDateValidator : public QValidator
{
public:
    TDateValidator(QString pattern, QObject *parent) : QValidator(parent), m_pattern(std::move(pattern))
    {
        for (const QChar c : m_pattern)
            if (QStringView(u"dMyHm").contains(c) && !m_order.contains(c))
                m_order += c;
    }

    State validate(QString &input, int &) const override
    {
        QString number;
        int part = 0;
        for (const QChar c : input) {
            if (isDigit(c)) {
                number += c;
            } else if (number.isEmpty() || c.isLetter() ||
                       !(m_pattern.contains(c) || QStringView(u"/.- ").contains(c))) {
                return Invalid;
            } else {
                number.clear();
                ++part;
            }
            if (!fits(number, part))
                return Invalid;
        }
        return ParseDate(input, m_pattern, QDate::currentDate()) ? Acceptable : Intermediate;
    }

private:
    // Digits alone run through the parts in twos.
    bool fits(const QString &number, int part) const
    {
        const auto limit = [](QChar which) {
            return which == u'd' ? 31 : which == u'M' ? 12 : which == u'H' ? 23 : 59;
        };
        QStringView rest = number;
        for (int at = part; !rest.isEmpty() && at < m_order.size(); ++at) {
            const bool isYear = m_order[at] == u'y';
            const auto digits = rest.left(isYear ? 4 : 2);
            if (!isYear && digits.toInt() > limit(m_order[at]))
                return false;
            rest = rest.mid(digits.size());
            if (part > 0)
                break;
        }
        return rest.isEmpty() && part < m_order.size();
    }

    QString m_pattern, m_order;
};

} // namespace

tzmDateEdit::tzmDateEdit(QWidget *parent) : TValueEdit(parent), m_arrow(new QToolButton(this))
{
    resetAlignment();
    setInputMethodHints(Qt::ImhDate);
    m_arrow->setArrowType(Qt::DownArrow);
    m_arrow->setAutoRaise(true);
    m_arrow->setFocusPolicy(Qt::NoFocus);
    m_arrow->setCursor(Qt::ArrowCursor);
    m_arrow->setAccessibleName(tr("Ouvrir le calendrier"));
    m_arrow->setToolTip(tr("Ouvrir le calendrier"));
    connect(m_arrow, &QToolButton::clicked, this, [this] {
        setFocus(Qt::OtherFocusReason);
        DropDown();
    });
}

void tzmDateEdit::setInputKind(TInputKind kind)
{
    m_inputKind = kind;
    allowTyping();
}

void tzmDateEdit::setEditMask(const QString &mask)
{
    m_editMask = mask;
    allowTyping();
}

void tzmDateEdit::setSaveTime(bool save)
{
    m_saveTime = save;
}

void tzmDateEdit::setShowTime(bool show)
{
    m_showTime = show;
    allowTyping();
}

// A mask does by itself what the validator does without one.
void tzmDateEdit::allowTyping()
{
    delete validator();
    if (m_inputKind == ikStandard)
        setValidator(new TDateValidator(pattern(), this));
    showValue();
}

QString tzmDateEdit::pattern() const
{
    const auto date = m_editMask.isEmpty() ? DatePattern(locale()) : DatePatternOfMask(m_editMask);
    return m_showTime ? date + timePattern.toString() : date;
}

QString tzmDateEdit::textOf(const QVariant &value, bool) const
{
    return value.isValid() ? value.toDateTime().toString(pattern()) : QString();
}

QString tzmDateEdit::typingMask() const
{
    if (m_inputKind != ikMask)
        return {};
    QString mask;
    for (const QChar c : pattern()) {
        if (QStringView(u"dMyHm").contains(c))
            mask += u'0';
        else
            mask += c.isLetterOrNumber() || QStringView(u"#<>!\\[]{};").contains(c) ? u'\\' + QString(c)
                                                                                    : QString(c);
    }
    return mask + u";_"_s;
}

QVariant tzmDateEdit::valueOf(const QString &text) const
{
    if (std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetterOrNumber(); }))
        return {};
    const auto value = read(text);
    if (!value.isValid())
        throw EConvertError(tr("« %1 » n'est pas une date").arg(text).toStdString());
    return value;
}

// Invalid when it is no date.
QVariant tzmDateEdit::read(const QString &text) const
{
    auto day = text.trimmed();
    std::optional<QTime> time;
    if (const auto colon = day.indexOf(u':'); colon > 0) {
        const auto blank = day.lastIndexOf(u' ', colon);
        time = ParseTime(day.mid(blank + 1));
        if (!time && day.mid(blank + 1) != u":") // a mask without a time in it
            return {};
        day.truncate(std::max<qsizetype>(blank, 0));
    }
    const auto form = m_editMask.isEmpty() ? DatePattern(locale()) : DatePatternOfMask(m_editMask);
    const bool hasYear = form.contains(u'y');
    const auto before = valueInForce().toDate();
    const auto date = ParseDate(day, form, hasYear || !before.isValid() ? QDate::currentDate() : before);
    return date ? kept(QDateTime(*date, time.value_or(QTime(0, 0)))) : QVariant();
}

// What is kept of a moment that the user means.
QVariant tzmDateEdit::kept(const QDateTime &moment) const
{
    return m_saveTime ? QVariant(moment) : QVariant(moment.date());
}

QVariant tzmDateEdit::held(const QVariant &value) const
{
    const auto moment = ConvertValue(value, ftDateTime, u"date"_s).toDateTime();
    return m_saveTime || m_showTime ? QVariant(moment) : QVariant(moment.date());
}

bool tzmDateEdit::takePasted(const QString &pasted)
{
    const auto value = read(pasted);
    if (!value.isValid())
        return false;
    selectAll();
    insert(textOf(value, true));
    return true;
}

void tzmDateEdit::DropDown()
{
    if (isReadOnly() || (m_popup && m_popup->isVisible()))
        return;
    QVariant shown;
    try {
        shown = EditValue();
    } catch (const EConvertError &) {
        shown = valueInForce();
    }
    const TDatePopupParts parts{m_buttons.testFlag(btnClear), m_buttons.testFlag(btnNow),
                                m_buttons.testFlag(btnToday), m_showTime, m_yearsInMonthList};
    m_popup =
        new TDatePopup(parts, shown.isValid() ? shown.toDateTime() : QDate::currentDate().startOfDay(), this);
    connect(m_popup, &TDatePopup::OnPick, this, &tzmDateEdit::pick);
    m_popup->OpenAt(*this);
}

void tzmDateEdit::pick(const QDateTime &moment)
{
    choose(moment.isValid() ? kept(moment) : QVariant());
    selectAll();
}

void tzmDateEdit::keyPressEvent(QKeyEvent *event)
{
    const bool opens = event->key() == Qt::Key_F4 ||
                       (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier));
    if (opens)
        DropDown();
    else
        TValueEdit::keyPressEvent(event);
}

void tzmDateEdit::changeEvent(QEvent *event)
{
    TValueEdit::changeEvent(event);
    if (event->type() == QEvent::LocaleChange)
        allowTyping();
    if (event->type() == QEvent::ReadOnlyChange)
        m_arrow->setEnabled(!isReadOnly());
}

void tzmDateEdit::resizeEvent(QResizeEvent *event)
{
    TValueEdit::resizeEvent(event);
    QStyleOptionFrame option;
    initStyleOption(&option);
    const auto inner = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    const int side = std::min(m_arrow->sizeHint().width(), inner.height());
    m_arrow->setGeometry(QStyle::visualRect(layoutDirection(), rect(),
                                            {inner.right() - side + 1, inner.top(), side, inner.height()}));
    setTextMargins(0, 0, side, 0);
}

QSize tzmDateEdit::sizeHint() const
{
    auto size = minimumSizeHint();
    size.rwidth() = std::max(size.width(), TValueEdit::sizeHint().width());
    return size;
}

// Room for the widest date.
QSize tzmDateEdit::minimumSizeHint() const
{
    auto size = TValueEdit::sizeHint();
    const auto digits = pattern().size() + 1;
    size.rwidth() = fontMetrics().horizontalAdvance(QString(digits, u'0')) + size.height() * 3 / 2;
    return size;
}

tzmDateEditJourMois::tzmDateEditJourMois(QWidget *parent) : tzmDateEdit(parent)
{
    presetInputKind();
    presetEditMask();
}

} // namespace Zelmar01
