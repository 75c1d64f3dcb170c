#include "Bench.h"

#include <Zelmar01/tabs/ExtPageControl.h>
#include <Zelmar01/tabs/ExtTabControl.h>
#include <Zelmar01/tabs/QtRect.h>

#include <QApplication>
#include <QPainter>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>
#include <cstdlib>
#include <vector>

using namespace Zelmar01;

#ifdef __GLIBC__
namespace {

std::size_t allocations = 0;

} // namespace

extern "C" void *__libc_malloc(std::size_t size);

extern "C" void *malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}
#endif

namespace {

constexpr int tabCount = 12;
constexpr QSize controlSize(1000, 600);

QStringList captions()
{
    const QStringList words{QStringLiteral("&Vente"), QStringLiteral("Fiche article"),
                            QStringLiteral("Stock"), QStringLiteral("Clients")};
    QStringList texts;
    for (int i = 0; i < tabCount; ++i)
        texts << words[i % words.size()];
    return texts;
}

class HotTabs : public TExtTabControl
{
public:
    using TExtTabControl::TExtTabControl;

    void MoveTo(int tab)
    {
        const int old = std::exchange(Hottrack()->HotTab, tab);
        HottrackChange(old, tab);
    }
};

/// The least that a repaint does: a picture that is there already is copied.
class PictureWidget : public QWidget
{
public:
    explicit PictureWidget(QWidget *parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }

    void Keep(const QPixmap &picture) { m_picture = picture; }

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).drawPixmap(0, 0, m_picture); }

private:
    QPixmap m_picture;
};

// The form that both stand on, shown and active, so that ours takes its buffered path as it does at a till.
void show(QWidget &form)
{
    form.resize(2 * controlSize.width() + 30, 2 * controlSize.height() + 120);
    form.show();
    form.activateWindow();
    for (int i = 0; i < 10; ++i)
        QApplication::processEvents();
}

void benchPaint()
{
    QWidget form;
    QTabBar bar(&form);
    QTabWidget theirs(&form);
    HotTabs ours(&form);
    PictureWidget kept(&form);
    for (const auto &caption : captions()) {
        bar.addTab(caption);
        theirs.addTab(new QWidget, caption);
    }
    ours.setTabs(captions());
    ours.setTabWidth(78);
    bar.setExpanding(false);
    bar.setUsesScrollButtons(false);
    theirs.setUsesScrollButtons(false);
    ours.setGeometry({QPoint(10, 10), controlSize});
    theirs.setGeometry({QPoint(10, 20 + controlSize.height()), controlSize});
    bar.setGeometry(10, 30 + 2 * controlSize.height(), controlSize.width(), bar.sizeHint().height());
    show(form);
    const auto strip = ToQRect(ours.Strip().StripArea());
    kept.setGeometry(strip.translated(20 + controlSize.width(), 10));
    kept.Keep(ours.grab(strip));
    Row("repaint a strip of 12 tabs")
        .Ours([&] { ours.repaint(strip); })
        .Peer("QTabBar", [&] { bar.repaint(); })
        .Limit("a kept picture of it", [&] { kept.repaint(); })
        .PeerTarget(1.0 / 3)
        .Print();
    kept.setGeometry(ours.geometry().translated(10 + controlSize.width(), 0));
    kept.Keep(ours.grab());
    Row("repaint the control, 1000 x 600")
        .Ours([&] { ours.repaint(); })
        .Peer("QTabWidget and its bar",
              [&] {
                  theirs.repaint();
                  theirs.tabBar()->repaint();
              })
        .Limit("a kept picture of it", [&] { kept.repaint(); })
        .PeerTarget(0.5)
        .Print();

    ours.Hottrack()->setEnabled(true);
    QApplication::processEvents();
    int hot = 0;
    Row("the hot tab moves")
        .Ours([&] { ours.MoveTo(hot = (hot + 1) % tabCount); })
        .Peer("QTabBar repaints two tabs", [&] { bar.repaint(QRegion(bar.tabRect(3)) + bar.tabRect(4)); })
        .PeerTarget(1)
        .Print();

#ifdef __GLIBC__
    std::vector<double> counts;
    for (int i = 1; i <= 20; ++i) {
        const auto before = allocations;
        ours.repaint();
        counts.push_back(static_cast<double>(allocations - before));
    }
    Row("allocations a repaint, the most of the 11th to the 20th")
        .Unit("calls")
        .Ours(*std::max_element(counts.begin() + 10, counts.end()))
        .Limit("the 10th", counts[9])
        .LimitTarget(1)
        .Print();
#endif
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchPaint();
}
