#include <Zelmar01/controls/zmGauges.h>
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Exceptions.h>

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <limits>
#include <memory>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

constexpr int lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();

class Gauge : public TzmGauge
{
public:
    using TzmGauge::TzmGauge;

    int Paints = 0;
    QString TextSeen;

protected:
    void Paint() override
    {
        ++Paints;
        TzmGauge::Paint();
    }
};

class Gauges : public testing::Test
{
protected:
    /// On screen and painted.
    Gauge &shown()
    {
        m_gauge->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(m_gauge.get()));
        QApplication::processEvents();
        m_gauge->Paints = 0;
        return *m_gauge;
    }
    QImage picture(int scale = 1)
    {
        QImage image(m_gauge->size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        m_gauge->render(&image);
        return image;
    }

    std::unique_ptr<Gauge> m_gauge = std::make_unique<Gauge>();
};

/// The pixels of a colour: their bounds, or nothing if they do not fill them.
QRect areaOf(const QImage &image, const QColor &color)
{
    QRect bounds;
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == color) {
                bounds |= QRect(x, y, 1, 1);
                ++count;
            }
    return count == bounds.width() * bounds.height() ? bounds : QRect();
}

QString refusal(const std::function<void()> &work)
{
    try {
        work();
    } catch (const EInvalidOperation &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

} // namespace

TEST_F(Gauges, boundsAreCheckedAtRunTimeAndTakeTheValueAlong)
{
    auto &gauge = *m_gauge;
    const auto between = [](const char *low, const char *high) {
        return u"La valeur doit être comprise entre %1 et %2"_s.arg(QLatin1String(low), QLatin1String(high));
    };
    EXPECT_EQ(refusal([&] { gauge.SetMinValue(101); }), between("-2147483647", "99"));
    EXPECT_EQ(refusal([&] { gauge.SetMaxValue(-1); }), between("1", "2147483647"));
    EXPECT_EQ(gauge.Min(), 0);
    EXPECT_EQ(gauge.Max(), 100);
    gauge.SetMinValue(40);
    EXPECT_EQ(gauge.Progress(), 40);
    gauge.SetProgress(90);
    gauge.SetMaxValue(60);
    EXPECT_EQ(gauge.Progress(), 60);
    gauge.SetMinValue(60);
    EXPECT_EQ(gauge.GetPercentDone(), 0) << "no span";
    EXPECT_THROW(gauge.setMin(61), EInvalidOperation) << "the writer of forms, once loading has ended";
    EXPECT_THROW(gauge.setProperty("Max", 59), EInvalidOperation);
}

TEST_F(Gauges, valuesStopAtTheBounds)
{
    const struct
    {
        int Min, Max, Progress, Step, Then;
    } cases[] = {
        {0, 100, 50, 60, 100},
        {0, 100, 50, -60, 0},
        {0, highest, highest, highest, highest},
        {lowest, 0, lowest, lowest, lowest},
        {0, 100, 200, 0, 100},
        {0, 3, 1, 1, 2},
    };
    for (const auto &one : cases) {
        TzmGauge gauge;
        gauge.SetMinValue(std::min(one.Min, 100));
        gauge.SetMaxValue(one.Max);
        gauge.SetProgress(one.Progress);
        gauge.StepBy(one.Step);
        EXPECT_EQ(gauge.Progress(), one.Then) << one.Min << ".." << one.Max;
    }
}

TEST_F(Gauges, formsSetPropertiesInAnyOrder)
{
    // m, x, p: Min 500, Max 900, Progress 700
    for (const std::string order : {"mxp", "pxm", "xmp", "pmx"}) {
        TzmGauge gauge;
        for (const char what : order) {
            if (what == 'm')
                gauge.setMin(500);
            else if (what == 'x')
                gauge.setProperty("Max", 900);
            else
                gauge.setProgress(700);
        }
        EXPECT_TRUE(gauge.IsLoading());
        gauge.ensurePolished();
        EXPECT_FALSE(gauge.IsLoading());
        EXPECT_EQ(gauge.GetPercentDone(), 50) << order;
    }
    TzmGauge raw;
    raw.setProgress(700);
    raw.setMin(200);
    EXPECT_EQ(raw.Progress(), 700);
    EXPECT_EQ(raw.Min(), 200) << "above Max";
    raw.StepIt();
    EXPECT_EQ(raw.Progress(), 100) << "a step ends loading";
    raw.show(); // bounds in the wrong order can be painted
    EXPECT_FALSE(raw.grab().isNull());
}

TEST_F(Gauges, isPaintedWhenTheWholePercentageChanges)
{
    auto &gauge = shown();
    gauge.SetMaxValue(1000);
    gauge.Paints = 0;
    int last = 0;
    QList<int> stepsThatPaint;
    for (int step = 1; step <= 30; ++step) {
        gauge.StepIt();
        if (std::exchange(last, gauge.Paints) != gauge.Paints)
            stepsThatPaint << step;
    }
    EXPECT_EQ(stepsThatPaint, QList<int>({10, 20, 30})) << "at once, without the event loop";

    gauge.Paints = 0;
    gauge.setForeColor(clBlue);
    gauge.setBackColor(clWhite);
    gauge.setShowText(false);
    gauge.setBorderStyle(bsNone);
    gauge.setKind(gkVerticalBar);
    EXPECT_EQ(gauge.Paints, 5);
}

TEST_F(Gauges, theBarHasItsPixels)
{
    const QColor fore(0, 128, 0);
    const struct
    {
        TBorderStyle Border;
        TzmGaugeKind Kind;
        int Percent;
        QRect Bar; // of a gauge of 420 x 32
    } cases[] = {
        {bsSingle, gkHorizontalBar, 0, {}},
        {bsSingle, gkHorizontalBar, 50, {1, 1, 208, 30}},
        {bsNone, gkHorizontalBar, 100, {0, 0, 420, 32}},
        {bsSingle, gkVerticalBar, 50, {1, 16, 418, 15}},
        {bsNone, gkVerticalBar, 100, {0, 1, 420, 31}},
    };
    auto &gauge = shown();
    gauge.setShowText(false);
    for (const auto &one : cases) {
        gauge.setBorderStyle(one.Border);
        gauge.setKind(one.Kind);
        gauge.SetProgress(one.Percent);
        for (const int scale : {1, 2})
            EXPECT_EQ(areaOf(picture(scale), fore), QRect(one.Bar.topLeft() * scale, one.Bar.size() * scale))
                << one.Border << one.Kind << ' ' << one.Percent << " at scale " << scale;
    }
}

TEST_F(Gauges, thePercentageIsInTheMiddleAndCutAtTheBorder)
{
    auto &gauge = shown();
    gauge.SetProgress(42);
    const auto seen = picture();
    QRect text;
    for (int y = 0; y < seen.height(); ++y)
        for (int x = 0; x < seen.width(); ++x)
            if (seen.pixelColor(x, y).lightness() > 150)
                text |= QRect(x, y, 1, 1);
    EXPECT_NEAR(text.center().x(), 210, 3);
    EXPECT_NEAR(text.center().y(), 16, 4);

    gauge.setBackColor(clBlack);
    gauge.SetProgress(0);
    gauge.resize(420, 10);
    const auto cut = picture();
    for (const int y : {0, 9})
        for (int x = 0; x < cut.width(); ++x)
            ASSERT_EQ(cut.pixelColor(x, y), QColor(Qt::black)) << x << ", " << y;
}

TEST_F(Gauges, proceduresDriveALoop)
{
    auto &gauge = shown();
    ParamJauge(&gauge, 3);
    EXPECT_EQ(gauge.GetPercentDone(), 33) << "the first step is shown at once";
    AfficherJauge(&gauge);
    EXPECT_EQ(gauge.GetPercentDone(), 66);

    const auto before = gauge.Paints;
    FinirProgressBar(&gauge);
    EXPECT_EQ(gauge.Progress(), 3);
    EXPECT_EQ(gauge.Paints, before) << "quiet";
    EXPECT_EQ(areaOf(picture(), QColor(0, 0, 128)).isNull(), true);
    RazJauge(&gauge);
    EXPECT_EQ(gauge.GetPercentDone(), 0);
    EXPECT_EQ(gauge.Max(), 100);

    ParamJauge(&gauge, 0);
    EXPECT_EQ(gauge.Progress(), 0);
    for (const auto procedure : {AfficherJauge, RazJauge, FinirProgressBar})
        procedure(nullptr);
    ParamJauge(nullptr, 5);
}

TEST_F(Gauges, whatHappensInAPauseDoesNoHarm)
{
    auto &gauge = shown();
    int starts = 0, steps = 0;
    const std::function<void()> loop = [&] {
        ++starts;
        ParamJauge(&gauge, 50);
        for (int step = 1; step < 50; ++step, ++steps) {
            if (starts < 3 && step == 20)
                QTimer::singleShot(0, &gauge, loop); // the user presses the button once more
            AfficherJauge(&gauge);
        }
        FinirProgressBar(&gauge);
    };
    loop();
    EXPECT_EQ(starts, 3);
    EXPECT_EQ(steps, 3 * 49);
    EXPECT_EQ(gauge.GetPercentDone(), 100);

    const QPointer<TzmGauge> gone = m_gauge.get();
    for (const auto procedure : {AfficherJauge, RazJauge, FinirProgressBar}) {
        auto *brief = new TzmGauge;
        const QPointer<TzmGauge> watched = brief;
        QTimer::singleShot(0, brief, [brief] { delete brief; });
        procedure(brief);
        QApplication::processEvents();
        EXPECT_TRUE(watched.isNull());
    }
}

TEST_F(Gauges, aScreenReaderIsToldNameAndValue)
{
    auto &gauge = *m_gauge;
    gauge.SetMaxValue(200);
    gauge.SetProgress(85);
    auto *told = QAccessible::queryAccessibleInterface(&gauge);
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->role(), QAccessible::ProgressBar);
    EXPECT_EQ(told->text(QAccessible::Name), u"Progression"_s);
    EXPECT_EQ(told->text(QAccessible::Value), u"42%"_s);
    ASSERT_NE(told->valueInterface(), nullptr);
    EXPECT_EQ(told->valueInterface()->currentValue(), 85);
    EXPECT_EQ(told->valueInterface()->maximumValue(), 200);
    told->valueInterface()->setCurrentValue(3);
    EXPECT_EQ(gauge.Progress(), 85) << "it is read only";
    gauge.setAccessibleName(u"Étiquettes"_s);
    EXPECT_EQ(told->text(QAccessible::Name), u"Étiquettes"_s);
}
