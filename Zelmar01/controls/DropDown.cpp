#include <Zelmar01/controls/DropDown.h>

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QEvent>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>
#include <vector>

namespace Zelmar01 {

namespace {

constexpr std::size_t measured = 20; // the texts with the most characters; the widest is among them

} // namespace

void TDropDown::Opened()
{
    auto *list = box().view()->window();
    if (!m_grip) {
        m_grip = new QSizeGrip(list);
        m_grip->installEventFilter(this);
        auto *column = qobject_cast<QBoxLayout *>(list->layout());
        column->addWidget(m_grip, 0, Qt::AlignRight | Qt::AlignBottom);
        column->setStretchFactor(box().view(), 1); // or the grip would take half of the room
    }
    m_grip->setVisible(Sizeable);

    const auto screen = box().screen()->availableGeometry();
    auto place = list->geometry();
    const bool isAbove = place.bottom() <= box().mapToGlobal(QPoint()).y();
    const int bottom = place.bottom();
    if (Sizeable && m_chosen.isValid()) {
        place.setSize(m_chosen);
    } else {
        place.setHeight(place.height() + (Sizeable ? m_grip->sizeHint().height() : 0));
        if (AutoSize)
            place.setWidth(std::max(place.width(), widthOfTexts()));
    }
    place.setSize(place.size().boundedTo(screen.size()));
    if (isAbove)
        place.moveBottom(bottom);
    place.moveLeft(std::clamp(place.left(), screen.left(), screen.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), screen.top(), screen.bottom() + 1 - place.height()));
    list->setGeometry(place);
    box().view()->scrollTo(box().view()->currentIndex());
}

bool TDropDown::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease) // the grip is all that is watched
        m_chosen = box().view()->window()->size();
    return QObject::eventFilter(watched, event);
}

int TDropDown::widthOfTexts() const
{
    std::vector<QString> texts;
    const auto isLonger = [](const QString &a, const QString &b) { return a.size() > b.size(); };
    for (int row = 0; row < box().count(); ++row) {
        auto text = box().itemText(row);
        if (texts.size() == measured && text.size() <= texts.back().size())
            continue;
        texts.insert(std::upper_bound(texts.begin(), texts.end(), text, isLonger), std::move(text));
        if (texts.size() > measured)
            texts.pop_back();
    }
    int widest = 0;
    for (const auto &text : texts)
        widest = std::max(widest, box().view()->fontMetrics().horizontalAdvance(text));
    const int margins = 4 * box().view()->fontMetrics().averageCharWidth();
    return widest + margins + box().view()->verticalScrollBar()->sizeHint().width();
}

} // namespace Zelmar01
