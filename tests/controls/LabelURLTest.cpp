#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/controls/ShellOpen.h>
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Exceptions.h>
#include <support/Environment.h>
#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

#include <fstream>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

class Link : public TLabelURL
{
public:
    using TLabelURL::CMMouseClick;
    using TLabelURL::TLabelURL;
};

/// A field and a link on a form; what the link opens is written down.
class Links : public testing::Test
{
protected:
    Links()
    {
        SetShellOpen(
            [this](const QString &address, int state) { m_opened << u"%1 (%2)"_s.arg(address).arg(state); });
        SetExceptionDisplay(
            [this](const std::exception &error) { m_shown << QString::fromUtf8(error.what()); });
        auto *layout = new QVBoxLayout(&m_form);
        layout->addWidget(m_field);
        layout->addWidget(m_link);
        m_link->setText(u"&Fournisseur"_s);
        m_link->setURL(u"exemple.fr"_s);
    }
    ~Links() override
    {
        SetShellOpen({});
        SetExceptionDisplay({});
    }

    void show()
    {
        m_form.show();
        m_form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_form));
        m_field->setFocus();
    }
    void moveTo(const QWidget &widget)
    {
        for (const int step : {1, 0})
            QTest::mouseMove(m_form.windowHandle(),
                             widget.mapTo(&m_form, widget.rect().center()) + QPoint(step, 0));
        QApplication::processEvents();
    }
    QMenu *openMenu()
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2), m_link->mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(m_link, &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }

    QWidget m_form;
    QLineEdit *m_field = new QLineEdit;
    Link *m_link = new Link;
    QStringList m_opened, m_shown;
};

} // namespace

TEST_F(Links, theAddressGetsItsPrefixUnlessItHoldsIt)
{
    const struct
    {
        TURLType Type;
        const char16_t *Url, *Opened;
    } cases[] = {
        {utHttp, u"exemple.fr", u"http://exemple.fr"},
        {utHttp, u"HTTP://Exemple.fr", u"HTTP://Exemple.fr"},
        {utHttp, u"exemple.fr/?a=http://b", u"exemple.fr/?a=http://b"},
        {utHttp, u"https://exemple.fr", u"http://https://exemple.fr"},
        {utHttp, u"", u"http://"},
        {utFile, u"/srv/été.pdf", u"file:///srv/été.pdf"},
        {utFTP, u"h/f", u"ftp://h/f"},
        {utMailTo, u"a@b.fr", u"mailto:a@b.fr"},
        {utNone, u"exemple.fr", u"exemple.fr"},
        {utNone, u"", u""},
        {utHttps, u"exemple.fr", u"https:exemple.fr"},
        {utHttps, u"Https://exemple.fr", u"Https://exemple.fr"},
        {utNntp, u"g", u"nntp://g"},
        {utWais, u"h", u"wais://h"},
    };
    for (const auto &one : cases) {
        m_link->setURLType(one.Type);
        m_link->setURL(QString::fromUtf16(one.Url));
        m_opened.clear();
        m_link->Click();
        EXPECT_EQ(m_opened, QStringList(QString::fromUtf16(one.Opened) + u" (10)"_s)) << int(one.Type);
    }
    m_opened.clear();
    m_link->setURLType(static_cast<TURLType>(13));
    m_link->Click();
    EXPECT_EQ(m_opened, QStringList()) << "no such type";
}

TEST_F(Links, theShowStateGoesAlong)
{
    const std::pair<TShowCommand, int> cases[] = {
        {scShowDefault, 10}, {scHide, 0}, {scMaximize, 3}, {scShowNormal, 1}, {TShowCommand(255), 10}};
    for (const auto &[command, state] : cases) {
        m_opened.clear();
        m_link->setShowCommand(command);
        m_link->Click();
        EXPECT_EQ(m_opened, QStringList(u"http://exemple.fr (%1)"_s.arg(state)));
    }
}

TEST_F(Links, mouseAndKeysOpenIt)
{
    show();
    const auto opened = [this] { return std::exchange(m_opened, {}).size(); };
    auto *window = m_form.windowHandle();
    const auto middle = m_link->mapTo(&m_form, m_link->rect().center());
    QTest::mouseClick(window, Qt::LeftButton, {}, middle);
    EXPECT_EQ(opened(), 1);
    EXPECT_EQ(QApplication::focusWidget(), m_field) << "a click leaves the focus where it is";
    QTest::mouseClick(window, Qt::RightButton, {}, middle);
    if (auto *menu = QApplication::activePopupWidget())
        menu->close();
    QTest::mousePress(window, Qt::LeftButton, {}, middle);
    QTest::mouseRelease(window, Qt::LeftButton, {}, m_field->mapTo(&m_form, QPoint(2, 2)));
    EXPECT_EQ(opened(), 0) << "let go elsewhere";

    QTest::keyClick(window, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), m_link);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        QTest::keyClick(window, key);
        EXPECT_EQ(opened(), 1) << key;
    }
    m_field->setFocus();
    QTest::keyClick(window, Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), m_link) << "Alt with the underlined letter";

    m_link->setEnabled(false);
    QTest::mouseClick(window, Qt::LeftButton, {}, middle);
    EXPECT_EQ(opened(), 0);
}

TEST_F(Links, theHandlerOfAClickComesFirst)
{
    show();
    QObject::connect(m_link, &TLabelURL::OnClick, m_link, [this] { m_link->setURL(u"autre.fr"_s); });
    QTest::mouseClick(m_link, Qt::LeftButton);
    EXPECT_EQ(m_opened, QStringList(u"http://autre.fr (10)"_s));

    SetShellOpen([](const QString &, int) { throw EInvalidOperation("rien pour l'ouvrir"); });
    QTest::mouseClick(m_link, Qt::LeftButton);
    EXPECT_EQ(m_shown, QStringList(u"rien pour l'ouvrir"_s));
    EXPECT_THROW(m_link->Click(), EInvalidOperation);

    m_opened.clear();
    auto *brief = new TLabelURL(&m_form);
    QObject::connect(brief, &TLabelURL::OnClick, brief, [](QObject *sender) { delete sender; });
    brief->Click();
    EXPECT_EQ(m_opened, QStringList());
}

TEST_F(Links, coloursFollowTheMouseWhileTheApplicationIsActive)
{
    show();
    moveTo(*m_field);
    EXPECT_EQ(m_link->Font_Color(), clBlue);
    moveTo(*m_link);
    EXPECT_EQ(m_link->Font_Color(), clRed);
    QTest::mouseClick(m_link, Qt::LeftButton);
    EXPECT_EQ(m_link->Font_Color(), clRed) << "a click changes nothing";
    m_link->MouseClick();
    EXPECT_EQ(m_link->Font_Color(), clNavy);
    moveTo(*m_field);
    EXPECT_EQ(m_link->Font_Color(), clBlue);
    m_link->setDefautColor(clGreen);
    EXPECT_EQ(m_link->Font_Color(), clGreen);

    QApplication::setActiveWindow(nullptr);
    m_link->MouseEnter();
    m_link->MouseClick();
    QEnterEvent enter({}, {}, {});
    QApplication::sendEvent(m_link, &enter);
    EXPECT_EQ(m_link->Font_Color(), clGreen) << "another application is active";
    m_link->CMMouseClick();
    EXPECT_EQ(m_link->Font_Color(), clNavy);
    m_link->MouseLeave();
    EXPECT_EQ(m_link->Font_Color(), clGreen);
}

TEST_F(Links, theFocusIsSeen)
{
    show();
    const auto without = m_link->grab().toImage();
    for (const auto reason : {Qt::TabFocusReason, Qt::OtherFocusReason}) {
        m_link->setFocus(reason);
        EXPECT_NE(m_link->grab().toImage(), without) << reason;
        m_field->setFocus();
    }
    EXPECT_EQ(m_link->grab().toImage(), without);
}

TEST_F(Links, theAddressIsShownAndCopied)
{
    show();
    m_link->setURL(u"exemple.fr/<b>?a&b"_s);
    const auto tip = [this] {
        QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), m_link->mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(m_link, &event);
        return QToolTip::text();
    };
    EXPECT_EQ(tip(), u"<p>http://exemple.fr/&lt;b&gt;?a&amp;b</p>"_s);
    m_link->setToolTip(u"Le site du fournisseur"_s);
    EXPECT_EQ(tip(), u"Le site du fournisseur"_s);
    QToolTip::hideText();

    m_link->addAction(u"De l'hôte"_s);
    auto *menu = openMenu();
    ASSERT_NE(menu, nullptr);
    QStringList texts;
    for (const auto *action : menu->actions())
        texts << action->text();
    EXPECT_EQ(texts, QStringList({u"De l'hôte"_s, {}, u"&Ouvrir le lien"_s, u"&Copier l'adresse"_s}));
    QTest::keyClick(menu, Qt::Key_C);
    EXPECT_EQ(QApplication::clipboard()->text(), u"http://exemple.fr/<b>?a&b"_s);
    menu = openMenu();
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, Qt::Key_O);
    EXPECT_EQ(m_opened.size(), 1);

    m_link->setURL(u"autre.fr"_s);
    m_link->setFocus();
    QTest::keyClick(m_form.windowHandle(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"http://autre.fr"_s);
}

TEST_F(Links, aScreenReaderFindsALink)
{
    show();
    auto *told = QAccessible::queryAccessibleInterface(m_link);
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->role(), QAccessible::Link);
    EXPECT_EQ(told->text(QAccessible::Name), u"Fournisseur"_s);
    EXPECT_EQ(told->text(QAccessible::Value), u"http://exemple.fr"_s);
    EXPECT_TRUE(told->state().focusable);
    EXPECT_TRUE(told->relations().isEmpty());
    ASSERT_NE(told->actionInterface(), nullptr);
    told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(m_opened.size(), 1);
}

#ifndef Q_OS_WIN

// With a program of this test in the place of the desktop's.
TEST(SystemOpen, takesTheAddressWholeAndNeverAsAnOption)
{
    const TempFolder folder;
    const auto program = folder / "xdg-open", seen = folder / "seen";
    std::ofstream(program) << "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$1\" > '" << seen.string() << ".new'\nmv '"
                           << seen.string() << ".new' '" << seen.string() << "'\n";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const EnvironmentSetting path("PATH", folder.Path().string() + ":" + std::getenv("PATH"));
    const struct
    {
        QString Address, Given;
    } cases[] = {
        {u"http://exemple.fr/a b?c=\"d\"&e='f'"_s, u"http://exemple.fr/a b?c=\"d\"&e='f'"_s},
        {u"http://x;touch /nulle-part;$(id)`id`|%s%20\\"_s,
         u"http://x;touch /nulle-part;$(id)`id`|%s%20\\"_s},
        {u"--help"_s, u"./--help"_s},
        {u"file:///été"_s, u"file:///été"_s},
    };
    for (const auto &one : cases) {
        ShellOpen(one.Address, 1);
        QFile file(QString::fromStdString(seen.string()));
        ASSERT_TRUE(QTest::qWaitFor([&] { return file.exists(); })) << one.Address.toStdString();
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(QString::fromUtf8(file.readAll()), u"1\n"_s + one.Given + u'\n');
        file.remove();
    }
}

#endif
