#include <Zelmar01/package/DosPrintHolder.h>
#include <Zelmar01/package/TaskPropertiesDialogHolder.h>
#include <Zelmar01/package/TaskSchedulerHolder.h>

#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <fstream>
#include <memory>

using namespace Zelmar01;

namespace {

// Lets the test ask what only objects may ask of themselves.
struct TAsked : QObject
{
    using QObject::isSignalConnected;
};

class HoldersTest : public testing::Test
{
protected:
    void SetUp() override
    {
        qputenv("ZELMAR01_JOBS", QByteArray::fromStdString((m_folder / "jobs").string()));
        SetExceptionDisplay([this](const std::exception &error) { m_shown.push_back(error.what()); });
    }
    void TearDown() override
    {
        SetExceptionDisplay({});
        qunsetenv("ZELMAR01_JOBS");
    }

    static void show(QWidget &form)
    {
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    }

    // A code file whose only code is this list.
    static void writeCodeFile(const std::filesystem::path &path, const std::string &list)
    {
        std::ofstream file(path, std::ios::binary);
        const auto line = [&](std::string text, const std::string &name = {}) {
            text.resize(51, ' ');
            text += name;
            text.resize(72, ' ');
            file << text << "*\r\n";
        };
        line("DosPrintControlCodes");
        line("#Epson");
        line(':' + list, "Reset");
    }

    TempFolder m_folder;
    std::vector<std::string> m_shown;
};

} // namespace

TEST_F(HoldersTest, TheyAreNeverSeenOnARunningFormAndTakeNoRoom)
{
    QWidget form;
    auto *const layout = new QVBoxLayout(&form);
    auto *const button = new QPushButton(&form);
    layout->addWidget(button);
    layout->activate();
    const auto before = form.sizeHint();
    auto *const holder = new TDosPrintHolder(&form);
    layout->addWidget(holder);
    EXPECT_EQ(form.sizeHint(), before);
    show(form);
    EXPECT_FALSE(holder->isVisible());
    holder->show();
    holder->setVisible(true);
    EXPECT_FALSE(holder->isVisible());
    TDosPrintHolder alone;
    alone.show();
    EXPECT_FALSE(alone.isVisible());
}

TEST_F(HoldersTest, AComponentIsLoadingUntilItsFormIsPolished)
{
    const auto bad = m_folder / "bad.PCC";
    writeCodeFile(bad, "27,escape");
    const auto file = QString::fromStdString(bad.string());
    QWidget form;
    auto *const page = new QWidget(&form);
    auto *const holder = new TDosPrintHolder(page);
    holder->setPrnFile(file);
    EXPECT_EQ(m_shown.size(), 1U);
    show(form);
    EXPECT_FALSE(holder->Component()->IsLoading());
    EXPECT_THROW(holder->setPrnFile(file), Exception);
    EXPECT_EQ(m_shown.size(), 1U);

    // A component that is put on a form that is already there is not loading.
    auto *const late = new TTaskPropertiesDialogHolder(page);
    EXPECT_THROW(late->setPages({}), ETaskDialogError);
}

TEST_F(HoldersTest, TheDialogFindsItsSchedulerByNameWhenItIsNeeded)
{
    QWidget form;
    auto *const page = new QWidget(&form);
    auto *const dialog = new TTaskPropertiesDialogHolder(page);
    dialog->setTaskScheduler(QStringLiteral("jobs"));
    EXPECT_EQ(dialog->Component()->TaskScheduler(), nullptr);
    QPushButton button;
    QObject::connect(&button, &QPushButton::clicked, dialog, &TTaskPropertiesDialogHolder::Execute);
    button.click();
    EXPECT_EQ(m_shown.size(), 1U);

    auto *const outer = new TTaskSchedulerHolder(&form);
    outer->setObjectName(QStringLiteral("jobs"));
    EXPECT_EQ(dialog->Component()->TaskScheduler(), outer->Component());
    delete outer;
    EXPECT_EQ(dialog->Component()->TaskScheduler(), nullptr);

    // The nearest one of two.
    const auto farther = std::make_unique<TTaskSchedulerHolder>(&form);
    farther->setObjectName(QStringLiteral("jobs"));
    auto *const nearer = new TTaskSchedulerHolder(page);
    nearer->setObjectName(QStringLiteral("jobs"));
    EXPECT_EQ(dialog->Component()->TaskScheduler(), nearer->Component());
    dialog->setTaskScheduler(QString());
    EXPECT_EQ(dialog->Component()->TaskScheduler(), nullptr);
}

TEST_F(HoldersTest, EventsArePassedOnWhenTheyAreAssigned)
{
    QWidget form;
    auto *const holder = new TTaskSchedulerHolder(&form);
    auto *const scheduler = holder->Component();
    auto *const job = scheduler->CreateNewItem(QStringLiteral("Export"));
    job->setApplicationName(QStringLiteral("/bin/true"));
    job->Save();
    const auto assigned = [&] {
        const auto event = QMetaMethod::fromSignal(&TTaskScheduler::OnBeforeTaskAdded);
        return (scheduler->*&TAsked::isSignalConnected)(event);
    };
    EXPECT_FALSE(assigned());
    int asked = 0;
    QObject::connect(holder, &TTaskSchedulerHolder::OnBeforeTaskAdded, &form,
                     [&](TTaskScheduler *sender, TTaskItem *, bool &canAdd) {
                         EXPECT_EQ(sender, scheduler);
                         canAdd = ++asked > 1;
                     });
    EXPECT_TRUE(assigned());
    holder->Refresh();
    EXPECT_EQ(scheduler->Count(), 0);
    holder->Refresh();
    EXPECT_EQ(scheduler->Count(), 1);
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(m_shown.empty());
}
