#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/package/ComponentHolder.h>
#include <Zelmar01/package/RegisterComponents.h>
#include <Zelmar01/package/Units.h>

#include <support/ComponentList.h>

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QScopeGuard>

#include <memory>
#include <set>

using namespace Zelmar01;

namespace {

struct TRegistered
{
    std::string Page;
    std::vector<TComponentClass> Classes;
};

std::vector<TRegistered> registeredBy(void (*procedure)())
{
    std::vector<TRegistered> calls;
    auto before = SetComponentRegistrar([&](const auto &page, const auto &classes) {
        calls.push_back({page, classes});
    });
    const auto restore = qScopeGuard([&] { SetComponentRegistrar(std::move(before)); });
    procedure();
    return calls;
}

std::vector<std::string> namesOf(const TRegistered &registered)
{
    std::vector<std::string> names;
    for (const auto &component : registered.Classes)
        names.push_back(component.Name);
    return names;
}

} // namespace

// The page of the documentation has the list that users read.
TEST(Registration, EachUnitRegistersItsClassesOnceOnThePage)
{
    const auto listed = ListedComponents(DESIGNER_PAGE);
    ASSERT_EQ(listed.size(), RegisteringUnits.size());
    std::set<std::string> all;
    for (std::size_t unit = 0; unit < listed.size(); ++unit) {
        SCOPED_TRACE(listed[unit].first);
        EXPECT_EQ(RegisteringUnits[unit].Name, listed[unit].first);
        const auto calls = registeredBy(RegisteringUnits[unit].Register);
        ASSERT_EQ(calls.size(), 1U);
        EXPECT_EQ(calls[0].Page, "Zelmar01");
        EXPECT_EQ(namesOf(calls[0]), listed[unit].second);
        all.insert(listed[unit].second.begin(), listed[unit].second.end());
    }
    EXPECT_EQ(all.size(), 35U);
    EXPECT_EQ(registeredBy(RegisterAllUnits).size(), 19U);
}

TEST(Registration, EachClassMakesWhatItSaysAndNamesItsHeader)
{
    QWidget form;
    for (const auto &unit : registeredBy(RegisterAllUnits)) {
        for (const auto &component : unit.Classes) {
            SCOPED_TRACE(component.Name);
            const std::unique_ptr<QWidget> made(component.Create(&form));
            EXPECT_EQ(made->parentWidget(), &form);
            EXPECT_STREQ(made->metaObject()->className(), component.FormClass->className());
            const bool isHolder = qobject_cast<TComponentHolder *>(made.get());
            EXPECT_EQ("Zelmar01::" + component.Name + (isHolder ? "Holder" : ""),
                      component.FormClass->className());
            EXPECT_TRUE(QFileInfo::exists(
                QStringLiteral(SOURCE_ROOT "/%1").arg(QString::fromStdString(component.Header))));
        }
    }
}

TEST(Registration, WithoutADesignerItIsAnError)
{
    EXPECT_THROW(PrnCode_fm::Register(), EInvalidOperation);
}
