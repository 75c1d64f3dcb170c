#include <Zelmar01/controls/DatePopup.h>

#include <QBoxLayout>
#include <QCalendarWidget>
#include <QComboBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTextCharFormat>
#include <QTimeEdit>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr int lastYear = 9999;
constexpr int neighbours = 12; // months before and after, in a list with years

} // namespace

TDatePopup::TDatePopup(const TDatePopupParts &parts, const QDateTime &shown, QWidget *editor)
    : QFrame(editor, Qt::Popup), m_calendar(new QCalendarWidget)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_NoMouseReplay); // a click on the button that opened it closes it
    setFrameStyle(QFrame::StyledPanel);
    setAccessibleName(tr("Calendrier"));
    setLocale(editor->locale());
    m_calendar->setLocale(locale());
    m_calendar->setFirstDayOfWeek(locale().firstDayOfWeek());
    m_calendar->setNavigationBarVisible(false);
    m_calendar->setDateEditEnabled(false); // dates are typed in the editor
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setDateRange(QDate(1, 1, 1), QDate(lastYear, 12, 31));
    for (const auto day : {Qt::Saturday, Qt::Sunday})
        m_calendar->setWeekdayTextFormat(day, QTextCharFormat()); // red cannot be read in dark palettes
    m_calendar->setSelectedDate(shown.date());

    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(makeHeader(parts.YearsInMonthList));
    layout->addWidget(m_calendar);
    if (parts.Time) {
        m_time = new QTimeEdit(shown.time());
        m_time->setDisplayFormat(u"HH:mm"_s);
        m_time->setAccessibleName(tr("Heure"));
        layout->addWidget(m_time);
    }
    layout->addWidget(makeButtons(parts));
    m_calendar->setFocus();
    connect(m_calendar, &QCalendarWidget::clicked, this, &TDatePopup::pickDay);
    connect(m_calendar, &QCalendarWidget::activated, this, &TDatePopup::pickDay);
}

QWidget *TDatePopup::makeHeader(bool yearsInMonthList)
{
    auto *header = new QWidget;
    auto *layout = new QHBoxLayout(header);
    layout->setContentsMargins({});
    const auto step = [&](Qt::ArrowType arrow, const QString &name, void (QCalendarWidget::*go)()) {
        auto *button = new QToolButton;
        button->setArrowType(arrow);
        button->setAccessibleName(name);
        button->setToolTip(name);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, m_calendar, go);
        layout->addWidget(button);
    };
    step(Qt::LeftArrow, tr("Mois précédent"), &QCalendarWidget::showPreviousMonth);
    m_month = new QComboBox;
    m_month->setAccessibleName(tr("Mois"));
    layout->addWidget(m_month, 1);
    m_year = new QSpinBox;
    m_year->setRange(1, lastYear);
    m_year->setAccessibleName(tr("Année"));
    layout->addWidget(m_year);
    step(Qt::RightArrow, tr("Mois suivant"), &QCalendarWidget::showNextMonth);

    const auto show = [this, yearsInMonthList] { showMonth(yearsInMonthList); };
    connect(m_calendar, &QCalendarWidget::currentPageChanged, this, show);
    connect(m_month, &QComboBox::activated, this, [this] {
        const auto month = m_month->currentData().toDate();
        m_calendar->setCurrentPage(month.year(), month.month());
    });
    connect(m_year, &QSpinBox::valueChanged, this,
            [this](int year) { m_calendar->setCurrentPage(year, m_calendar->monthShown()); });
    show();
    return header;
}

void TDatePopup::fillMonths(bool yearsInMonthList)
{
    const QDate shown(m_calendar->yearShown(), m_calendar->monthShown(), 1);
    const auto first = yearsInMonthList ? shown.addMonths(-neighbours) : QDate(shown.year(), 1, 1);
    const int count = yearsInMonthList ? 2 * neighbours + 1 : 12;
    m_month->clear();
    for (int i = 0; i < count; ++i) {
        const auto month = first.addMonths(i);
        auto text = locale().standaloneMonthName(month.month());
        if (yearsInMonthList)
            text += u' ' + QString::number(month.year());
        if (month.year() >= 1 && month.year() <= lastYear)
            m_month->addItem(text, month);
        if (month == shown)
            m_month->setCurrentIndex(m_month->count() - 1);
    }
}

void TDatePopup::showMonth(bool yearsInMonthList)
{
    const QSignalBlocker quiet(m_year);
    m_year->setValue(m_calendar->yearShown());
    fillMonths(yearsInMonthList);
}

QWidget *TDatePopup::makeButtons(const TDatePopupParts &parts)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    const auto add = [&](bool wanted, const QString &text, const std::function<QDateTime()> &moment) {
        if (!wanted)
            return;
        auto *button = new QPushButton(text);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, moment] { pick(moment()); });
        layout->addWidget(button);
    };
    add(parts.Clear, tr("&Effacer"), [] { return QDateTime(); });
    add(parts.Now, tr("&Maintenant"), [] { return QDateTime::currentDateTime(); });
    add(parts.Today, tr("&Aujourd'hui"), [] { return QDate::currentDate().startOfDay(); });
    row->setVisible(layout->count() > 0);
    return row;
}

void TDatePopup::pickDay(QDate day)
{
    pick(QDateTime(day, m_time ? m_time->time() : QTime(0, 0)));
}

void TDatePopup::pick(const QDateTime &moment)
{
    // Closed first: a refused day is told in a window of its own.
    hide();
    emit OnPick(moment);
    close();
}

void TDatePopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F4)
        close();
    else
        QFrame::keyPressEvent(event);
}

void TDatePopup::OpenAt(const QWidget &editor)
{
    adjustSize();
    const auto screen = editor.screen()->availableGeometry();
    auto place = editor.mapToGlobal(QPoint(0, editor.height()));
    if (place.y() + height() > screen.bottom())
        place.setY(editor.mapToGlobal(QPoint()).y() - height());
    place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    place.setY(std::max(place.y(), screen.top()));
    move(place);
    show();
    m_calendar->setFocus();
}

} // namespace Zelmar01
