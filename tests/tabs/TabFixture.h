#pragma once

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/tabs/ExtPageControl.h>
#include <Zelmar01/tabs/ExtTabControl.h>
#include <Zelmar01/tabs/QtRect.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include <ostream>
#include <vector>

namespace Zelmar01 {

inline void PrintTo(const TRect &rect, std::ostream *out)
{
    *out << '{' << rect.Left << ", " << rect.Top << ", " << rect.Right << ", " << rect.Bottom << '}';
}

} // namespace Zelmar01

/// A control that tells what it is asked to draw.
template<class Control>
class TProbe : public Control
{
public:
    using Control::Control;
    using Control::WMHelp;

    std::vector<int> Requests;
    int Paints = 0;

    std::vector<int> TakeRequests() { return std::exchange(Requests, {}); }
    int TakePaints() { return std::exchange(Paints, 0); }

protected:
    void CNDrawTab(const Zelmar01::TTabDrawRequest &request) override
    {
        Requests.push_back(request.ItemID);
        Control::CNDrawTab(request);
    }
    void paintEvent(QPaintEvent *event) override
    {
        ++Paints;
        Control::paintEvent(event);
    }
};

/// A form of 500 by 300 with one tab control, and the exceptions that were displayed.
class TabFixture : public testing::Test
{
protected:
    using TPageProbe = TProbe<Zelmar01::TExtPageControl>;
    using TTabProbe = TProbe<Zelmar01::TExtTabControl>;

    TabFixture()
    {
        Zelmar01::SetExceptionDisplay([this](const std::exception &error) { m_shown << error.what(); });
        m_form.setFixedSize(500, 300);
    }
    ~TabFixture() override { Zelmar01::SetExceptionDisplay({}); }

    /// Pages with these captions, of tabs of 80 by 24.
    TPageProbe &pages(const QStringList &captions)
    {
        auto *control = new TPageProbe(&m_form);
        for (const auto &caption : captions)
            (new Zelmar01::TTabSheet(control))->setCaption(caption);
        return place(control);
    }
    TTabProbe &tabs(const QStringList &captions)
    {
        auto *control = new TTabProbe(&m_form);
        control->setTabs(captions);
        return place(control);
    }

    void show()
    {
        m_form.show();
        m_form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_form));
        settle();
    }
    static void settle()
    {
        for (int i = 0; i < 3; ++i)
            QApplication::processEvents();
    }

    /// Four stones of 16 by 16.
    static QPixmap glyphs() { return QPixmap(QStringLiteral(PICTURES "/glyphs.png")); }

    static QPoint middleOf(const Zelmar01::TExtCustomTab &control, int tab)
    {
        return Zelmar01::ToQRect(control.GetTabRect(tab)).center();
    }
    void moveTo(const Zelmar01::TExtCustomTab &control, QPoint point)
    {
        // A move to where the mouse is already is none.
        for (const auto &at : {point + QPoint(1, 0), point})
            QTest::mouseMove(m_form.windowHandle(), control.mapTo(&m_form, at));
        settle();
    }
    void click(const Zelmar01::TExtCustomTab &control, int tab)
    {
        QTest::mouseClick(m_form.windowHandle(), Qt::LeftButton, {},
                          control.mapTo(&m_form, middleOf(control, tab)));
        settle();
    }

    QWidget m_form;
    QStringList m_shown;

private:
    template<class Control>
    Control &place(Control *control)
    {
        control->setTabWidth(80);
        control->setTabHeight(24);
        control->setGeometry(10, 20, 480, 270);
        return *control;
    }
};
