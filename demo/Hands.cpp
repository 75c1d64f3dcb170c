#include "Hands.h"

#include <Zelmar01/core/Exceptions.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace Shop {

namespace {

class EFailedRun : public Zelmar01::Exception
{
public:
    using Exception::Exception;
};

} // namespace

void Fail(const QString &why)
{
    throw EFailedRun(why.toStdString());
}

void Press(QWidget &widget, Qt::Key key)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

void WaitUntil(const std::function<bool()> &isSo, const QString &what)
{
    const QDeadlineTimer deadline(20s);
    while (!isSo()) {
        if (deadline.hasExpired())
            Fail(what);
        // Widgets that have been closed are deleted by a whole event loop only.
        QEventLoop loop;
        QTimer::singleShot(10ms, &loop, &QEventLoop::quit);
        loop.exec();
    }
}

} // namespace Shop
