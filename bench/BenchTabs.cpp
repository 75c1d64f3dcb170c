#include "Bench.h"

#include <Zelmar01/tabs/ExtPageControl.h>
#include <Zelmar01/tabs/ExtTabControl.h>
#include <Zelmar01/tabs/QtRect.h>

#include <QApplication>
#include <QTabBar>
#include <QTabWidget>

#include <cstdlib>

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

// The form that both stand on, shown and active, so that ours takes its buffered path as it does at a till.
void show(QWidget &form)
{
    form.resize(controlSize.width() + 20, 2 * controlSize.height() + 120);
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
    Comparison::Print(
        "tabs: repaint a strip of 12 tabs", "QTabBar", 1.0 / 3, [&] { ours.repaint(strip); },
        [&] { bar.repaint(); });
    Comparison::Print(
        "tabs: repaint the control, 1000 x 600", "QTabWidget and its bar", 0.5, [&] { ours.repaint(); },
        [&] {
            theirs.repaint();
            theirs.tabBar()->repaint();
        });

    ours.Hottrack()->setEnabled(true);
    QApplication::processEvents();
    int hot = 0;
    Comparison::Print(
        "tabs: the hot tab moves", "QTabBar repaints two tabs", 1,
        [&] { ours.MoveTo(hot = (hot + 1) % tabCount); },
        [&] { bar.repaint(QRegion(bar.tabRect(3)) + bar.tabRect(4)); });

#ifdef __GLIBC__
    std::printf("tabs: allocations a repaint:");
    for (int i = 1; i <= 20; ++i) {
        const auto before = allocations;
        ours.repaint();
        const auto count = allocations - before;
        if (i == 1 || i >= 10)
            std::printf(" %zu", count);
    }
    std::printf(" (the 1st, the 10th to the 20th)\n");
#endif
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Comparison::PrintHeader();
    benchPaint();
}
