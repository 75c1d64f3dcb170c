#include <Zelmar01/core/ApplicationDirectory.h>
#include <Zelmar01/core/Component.h>

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

using namespace Zelmar01;

TEST(Component, isLoadingWhileItsFormIsBuilt)
{
    QWidget form;
    TComponent onForm(&form);
    EXPECT_TRUE(onForm.IsLoading());
    form.show();
    EXPECT_FALSE(onForm.IsLoading());

    TComponent atRunTime(&form);
    EXPECT_FALSE(atRunTime.IsLoading());

    form.hide();
    TComponent whileHidden(&form);
    EXPECT_TRUE(whileHidden.IsLoading());
    form.show();
    EXPECT_FALSE(whileHidden.IsLoading());
}

TEST(Component, isLoadedWithTheFormEvenWhenItsOwnerStaysHidden)
{
    QWidget form;
    auto *page = new QWidget(&form);
    page->hide();
    auto *component = new TComponent(page);
    EXPECT_TRUE(component->IsLoading());
    form.show();
    EXPECT_FALSE(component->IsLoading());
}

TEST(Component, isLoadedWithTheFormThatItWasMovedTo)
{
    QWidget first, second, shown;
    QObject plain;
    auto *component = new TComponent(&first), *onScreen = new TComponent(&first),
         *free = new TComponent(&first);
    component->setParent(&second);
    onScreen->setParent(&shown);
    shown.show();
    free->setParent(&plain);
    first.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(component->IsLoading());
    EXPECT_FALSE(onScreen->IsLoading() || free->IsLoading());
    second.show();
    EXPECT_FALSE(component->IsLoading());
}

TEST(Component, withoutAFormItNeverLoads)
{
    QObject owner;
    EXPECT_FALSE(TComponent(&owner).IsLoading());
    EXPECT_FALSE(TComponent().IsLoading());
}

TEST(Component, aHostEndsLoadingItself)
{
    QWidget form;
    TComponent component(&form);
    component.Loaded();
    EXPECT_FALSE(component.IsLoading());
    form.ensurePolished();
    EXPECT_FALSE(component.IsLoading());
}

TEST(ApplicationDirectory, isTheExecutablesUnlessSet)
{
    EXPECT_EQ(ApplicationDirectory().string(), QApplication::applicationDirPath().toStdString());
    SetApplicationDirectory("/somewhere/else");
    EXPECT_EQ(ApplicationDirectory(), "/somewhere/else");
    SetApplicationDirectory({});
    EXPECT_EQ(ApplicationDirectory().string(), QApplication::applicationDirPath().toStdString());
}
