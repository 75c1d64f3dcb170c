#include "Bench.h"

#include <Zelmar01/controls/zmGauges.h>

#include <QApplication>
#include <QPainter>
#include <QProgressBar>
#include <QVBoxLayout>

using namespace Zelmar01;

namespace {

constexpr int largest = 1'000'000;

/// The least that a repaint does: one colour over the whole.
class FilledWidget : public QWidget
{
public:
    FilledWidget() { setAttribute(Qt::WA_OpaquePaintEvent); }

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), Qt::blue); }
};

/// A gauge and a stock bar of the same size, on screen.
struct TForm
{
    TForm()
    {
        auto *layout = new QVBoxLayout(&Window);
        for (QWidget *bar : {static_cast<QWidget *>(Ours), static_cast<QWidget *>(Theirs), Filled}) {
            layout->addWidget(bar);
            bar->setFixedSize(420, 32);
        }
        Window.show();
        for (int i = 0; i < 10; ++i)
            QApplication::processEvents();
    }

    void Begin(int count)
    {
        ParamJauge(Ours, count);
        Theirs->setRange(0, count);
        Theirs->setValue(1);
    }

    QWidget Window;
    TzmGauge *Ours = new TzmGauge;
    QProgressBar *Theirs = new QProgressBar;
    QWidget *Filled = new FilledWidget;
};

void benchSteps(TForm &form, int steps, int rounds)
{
    Row("gauge, StepIt", static_cast<std::size_t>(steps))
        .Rounds(rounds)
        .Ours([&] {
            form.Begin(steps);
            for (int step = 1; step < steps; ++step)
                form.Ours->StepIt();
        })
        .Peer("QProgressBar::setValue",
              [&] {
                  form.Begin(steps);
                  for (int step = 1; step < steps; ++step)
                      form.Theirs->setValue(form.Theirs->value() + 1);
              })
        .PeerTarget(steps == largest ? 0.1 : 0)
        .Print();
}

void benchPumping(TForm &form, int steps, int rounds)
{
    Row("gauge, AfficherJauge", static_cast<std::size_t>(steps))
        .Rounds(rounds)
        .Ours([&] {
            form.Begin(steps);
            for (int step = 1; step < steps; ++step)
                AfficherJauge(form.Ours);
        })
        .Peer("QProgressBar::setValue and processEvents",
              [&] {
                  form.Begin(steps);
                  for (int step = 1; step < steps; ++step) {
                      form.Theirs->setValue(form.Theirs->value() + 1);
                      QApplication::processEvents();
                  }
              })
        .Limit("processEvents alone",
               [&] {
                   for (int step = 1; step < steps; ++step)
                       QApplication::processEvents();
               })
        .LimitTarget(steps == largest ? 1.2 : 0)
        .Print();
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    TForm form;
    form.Begin(100);
    Row("gauge, one repaint of 420 x 32")
        .Ours([&] { form.Ours->repaint(); })
        .Peer("QProgressBar", [&] { form.Theirs->repaint(); })
        .Limit("one colour", [&] { form.Filled->repaint(); })
        .PeerTarget(0.1)
        .Print();
    for (const int steps : {10'000, 100'000, largest}) {
        benchSteps(form, steps, steps == largest ? 3 : 7);
        benchPumping(form, steps, steps == largest ? 3 : 7);
    }
}
