#include "Bench.h"

#include <Zelmar01/controls/zmGauges.h>

#include <QApplication>
#include <QProgressBar>
#include <QVBoxLayout>

using namespace Zelmar01;

namespace {

constexpr int steps = 1'000'000, rounds = 5;

/// A gauge and a stock bar of the same size, on screen.
struct TForm
{
    TForm()
    {
        auto *layout = new QVBoxLayout(&Window);
        for (QWidget *bar : {static_cast<QWidget *>(Ours), static_cast<QWidget *>(Theirs)}) {
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
};

void benchSteps(TForm &form)
{
    Comparison::Print(
        "gauge: 1,000,000 StepIt", "QProgressBar::setValue", 0.1,
        [&] {
            form.Begin(steps);
            for (int step = 1; step < steps; ++step)
                form.Ours->StepIt();
        },
        [&] {
            form.Begin(steps);
            for (int step = 1; step < steps; ++step)
                form.Theirs->setValue(form.Theirs->value() + 1);
        },
        rounds);
}

void benchPumping(TForm &form)
{
    const auto ours = [&] {
        form.Begin(steps);
        for (int step = 1; step < steps; ++step)
            AfficherJauge(form.Ours);
    };
    Comparison::Print(
        "gauge: 1,000,000 AfficherJauge", "QProgressBar and processEvents", 1, ours,
        [&] {
            form.Begin(steps);
            for (int step = 1; step < steps; ++step) {
                form.Theirs->setValue(form.Theirs->value() + 1);
                QApplication::processEvents();
            }
        },
        rounds);
    Comparison::Print(
        "gauge: 1,000,000 AfficherJauge", "processEvents alone", 1.2, ours,
        [] {
            for (int step = 1; step < steps; ++step)
                QApplication::processEvents();
        },
        rounds);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Comparison::PrintHeader();
    TForm form;
    form.Begin(100);
    Comparison::Print(
        "gauge: one repaint, 420 x 32", "QProgressBar", 0.1, [&] { form.Ours->repaint(); },
        [&] { form.Theirs->repaint(); });
    benchSteps(form);
    benchPumping(form);
}
