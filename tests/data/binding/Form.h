#pragma once

#include <Zelmar01/core/ExceptionDisplay.h>

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QStringList>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include <utility>

/// A window with controls below one another.
class Form : public QWidget
{
public:
    Form() { new QVBoxLayout(this); }

    template<class Control>
    Control &Add()
    {
        auto *control = new Control;
        layout()->addWidget(control);
        return *control;
    }

    void Show()
    {
        show();
        activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
    }
};

/// Types a text, accented letters too.
inline void TypeKeys(QWidget &widget, const QString &text)
{
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
}

/// What the user was told by the exception display while this lives.
class Told
{
public:
    Told()
        : m_before(Zelmar01::SetExceptionDisplay(
              [this](const std::exception &error) { m_texts << QString::fromUtf8(error.what()); }))
    {
    }
    ~Told() { Zelmar01::SetExceptionDisplay(m_before); }
    Told(const Told &) = delete;
    Told &operator=(const Told &) = delete;

    /// The messages since the last call, with those that wait for the event loop.
    QStringList Take()
    {
        QTest::qWait(1);
        return std::exchange(m_texts, {});
    }

private:
    QStringList m_texts;
    Zelmar01::TExceptionDisplay m_before;
};
