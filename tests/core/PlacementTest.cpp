#include <Zelmar01/core/Placement.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QWidget>

using namespace Zelmar01;

namespace {

class Placed : public testing::Test
{
protected:
    Placed()
    {
        m_form.resize(300, 200);
        m_form.show();
    }

    QWidget &add(TPlacement::TAlign align,
                 TPlacement::TAnchors anchors = TPlacement::akLeft | TPlacement::akTop)
    {
        auto *control = new QWidget(&m_form);
        control->setGeometry(20, 30, 60, 40);
        auto *placement = new TPlacement(control);
        placement->setAnchors(anchors);
        placement->setAlign(align);
        control->show();
        return *control;
    }

    QWidget m_form;
};

} // namespace

TEST_F(Placed, sidesAreTakenInTheirOrder)
{
    using P = TPlacement;
    auto &client = add(P::alClient), &right = add(P::alRight), &left = add(P::alLeft),
         &bottom = add(P::alBottom), &top = add(P::alTop), &second = add(P::alTop),
         &custom = add(P::alCustom, {});
    const auto expect = [&](QSize size) {
        EXPECT_EQ(top.geometry(), QRect(0, 0, size.width(), 40));
        EXPECT_EQ(second.geometry(), QRect(0, 40, size.width(), 40));
        EXPECT_EQ(bottom.geometry(), QRect(0, size.height() - 40, size.width(), 40));
        EXPECT_EQ(left.geometry(), QRect(0, 80, 60, size.height() - 120));
        EXPECT_EQ(right.geometry(), QRect(size.width() - 60, 80, 60, size.height() - 120));
        EXPECT_EQ(client.geometry(), QRect(60, 80, size.width() - 120, size.height() - 120));
        EXPECT_EQ(custom.geometry(), QRect(20, 30, 60, 40));
    };
    expect({300, 200});
    m_form.resize(500, 400);
    expect({500, 400});

    second.hide();
    EXPECT_EQ(left.y(), 40);
    second.show();
    top.resize(top.width(), 10);
    EXPECT_EQ(second.y(), 10);
    right.setParent(nullptr);
    EXPECT_EQ(client.geometry(), QRect(60, 50, 440, 310));
    m_form.resize(300, 200);
    EXPECT_EQ(right.size(), QSize(60, 310)) << "it is no longer the form's";
    delete &right;
}

TEST_F(Placed, anchorsKeepTheDistance)
{
    using P = TPlacement;
    const struct
    {
        P::TAnchors Anchors;
        QRect Grown; // when the form of 300 x 200 becomes one of 400 x 280
    } cases[] = {
        {P::akLeft | P::akTop, {20, 30, 60, 40}},
        {P::akRight | P::akBottom, {120, 110, 60, 40}},
        {P::akLeft | P::akRight | P::akTop | P::akBottom, {20, 30, 160, 120}},
        {{}, {20 + 100 * 20 / 240, 30 + 80 * 30 / 160, 60, 40}},
    };
    for (const auto &one : cases) {
        m_form.resize(300, 200);
        auto &control = add(P::alNone, one.Anchors);
        m_form.resize(400, 280);
        EXPECT_EQ(control.geometry(), one.Grown) << one.Anchors.toInt();
        m_form.resize(50, 41);
        m_form.resize(300, 200);
        EXPECT_EQ(control.geometry(), QRect(20, 30, 60, 40)) << one.Anchors.toInt();
        delete &control;
    }
}

TEST_F(Placed, aFormIsPlacedWhenItIsShownAndALayoutComesFirst)
{
    QWidget form;
    auto *control = new QWidget(&form);
    control->resize(60, 40);
    (new TPlacement(control))->setAlign(TPlacement::alRight);
    form.resize(300, 200);
    form.show();
    QApplication::processEvents();
    EXPECT_EQ(control->geometry(), QRect(240, 0, 60, 200));

    auto &laid = add(TPlacement::alRight);
    auto *layout = new QHBoxLayout(&m_form);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&laid);
    m_form.resize(301, 201);
    QApplication::processEvents();
    EXPECT_EQ(laid.geometry(), QRect(0, 0, 301, 201));
}
