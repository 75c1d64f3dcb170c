#include "ui_AllComponents.h"

#include <designer/FormEditor.h>
#include <designer/Published.h>
#include <support/ComponentList.h>
#include <support/Environment.h>
#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QBuffer>
#include <QDomDocument>
#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>
#include <QUiLoader>
#include <QUndoStack>
#include <QtDesigner/QDesignerContainerExtension>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>
#include <QtDesigner/QExtensionManager>

#include <set>

using namespace Qt::StringLiterals;

namespace {

class DesignerTest : public testing::Test
{
protected:
    static QDomElement widgetOf(QDomDocument &document, const QString &domXml)
    {
        document.setContent(domXml);
        const auto root = document.documentElement();
        return root.tagName() == "widget"_L1 ? root : root.firstChildElement(u"widget"_s);
    }

    // A form onto which each component of the palette was dropped.
    QString dropped() const
    {
        QString widgets;
        QTextStream text(&widgets);
        for (const auto &widget : m_editor.Palette(u"Zelmar01"_s)) {
            QDomDocument document;
            widgetOf(document, widget.domXml()).save(text, 1);
        }
        return u"<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\">"_s +
               widgets + u"</widget></ui>"_s;
    }

    TempFolder m_folder;
    EnvironmentSetting m_jobs{"ZELMAR01_JOBS", (m_folder / "jobs").string()};
    FormEditor m_editor;
};

// Align moves a control, and nothing moves it back.
std::string withoutPlaces(QString form)
{
    static const QRegularExpression place(u"<rect>.*?</rect>"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    return form.remove(place).toStdString();
}

// The kind of editor that a property has, by the value that the property sheet gives it.
const char *editorOf(const QMetaProperty &property)
{
    if (property.isFlagType())
        return "qdesigner_internal::PropertySheetFlagValue";
    if (property.isEnumType())
        return "qdesigner_internal::PropertySheetEnumValue";
    switch (property.metaType().id()) {
    case QMetaType::QString:
        return "qdesigner_internal::PropertySheetStringValue";
    case QMetaType::QStringList:
        return "qdesigner_internal::PropertySheetStringListValue";
    case QMetaType::QPixmap:
        return "qdesigner_internal::PropertySheetPixmapValue";
    default:
        return property.metaType().name();
    }
}

} // namespace

TEST_F(DesignerTest, ThePaletteOffersEveryComponentWithIconToolTipAndSize)
{
    std::vector<std::string> listed, offered;
    for (const auto &[unit, classes] : ListedComponents(DESIGNER_PAGE))
        listed.insert(listed.end(), classes.begin(), classes.end());
    const auto *const known = m_editor.Core()->widgetDataBase();
    for (const auto &widget : m_editor.Palette(u"Zelmar01"_s)) {
        SCOPED_TRACE(widget.name().toStdString());
        offered.push_back(widget.name().toStdString());
        QDomDocument document;
        const auto *const item =
            known->item(known->indexOfClassName(widgetOf(document, widget.domXml()).attribute(u"class"_s)));
        ASSERT_NE(item, nullptr);
        EXPECT_FALSE(item->toolTip().isEmpty());
        EXPECT_TRUE(item->includeFile().startsWith("<Zelmar01/"_L1));
        // Else the palette shows an icon of its own.
        EXPECT_FALSE(widget.iconName().isEmpty());
    }
    EXPECT_EQ(offered, listed);

    const auto *const form = m_editor.Open(dropped());
    ASSERT_NE(form, nullptr);
    for (const auto *const widget :
         form->mainContainer()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        SCOPED_TRACE(widget->metaObject()->className());
        EXPECT_GE(widget->width(), 16);
        EXPECT_GE(widget->height(), 12);
        EXPECT_TRUE(widget->isVisibleTo(form->mainContainer()));
    }
}

TEST_F(DesignerTest, EachPropertyHasItsEditorAndIsKeptByTheForm)
{
    auto *const form = m_editor.Open(dropped());
    ASSERT_NE(form, nullptr);
    const auto untouched = form->contents();
    std::size_t rounds = 1, edited = 0;
    for (std::size_t round = 0; round < rounds; ++round) {
        QMap<QString, std::pair<const char *, QString>> written;
        for (auto *const widget : Components(form->mainContainer())) {
            const auto published = Published(*widget);
            rounds = std::max(rounds, published.size());
            if (round >= published.size())
                continue;
            const auto property = published[round];
            if (QLatin1String(property.name()) == "TabIndex"_L1) // there are no tabs yet
                continue;
            SCOPED_TRACE(widget->metaObject()->className() + std::string("::") + property.name());
            const auto name = QString::fromLatin1(property.name());
            auto *const sheet = m_editor.Sheet(widget);
            const int index = sheet->indexOf(name);
            ASSERT_GE(index, 0);
            EXPECT_STREQ(sheet->property(index).typeName(), editorOf(property));
            const bool isPage = QByteArrayView(widget->metaObject()->className()).endsWith("TTabSheet");
            EXPECT_EQ(sheet->isChanged(index), isPage && name == "Caption"_L1);
            const auto before = Text(property, *widget);
            const auto value = name == "ActivePage"_L1 ? Components(widget).back()->objectName()
                                                       : Another(property, *widget);
            EXPECT_TRUE(m_editor.Edit(form, widget, name, value));
            if (value.isValid()) {
                const auto after = Text(property, *widget);
                EXPECT_NE(after, before);
                written.insert(widget->objectName(), {property.name(), after});
                ++edited;
            }
        }

        const std::unique_ptr<QDesignerFormWindowInterface> again(m_editor.Open(form->contents()));
        for (const auto &[object, property] : written.asKeyValueRange()) {
            const auto *const widget = again->mainContainer()->findChild<QWidget *>(object);
            ASSERT_NE(widget, nullptr) << object.toStdString();
            const auto *const meta = widget->metaObject();
            EXPECT_EQ(Text(meta->property(meta->indexOfProperty(property.first)), *widget), property.second)
                << meta->className() << "::" << property.first;
        }
        while (form->commandHistory()->canUndo())
            form->commandHistory()->undo();
        EXPECT_EQ(withoutPlaces(form->contents()), withoutPlaces(untouched));
    }
    EXPECT_GT(edited, 250U);
}

TEST_F(DesignerTest, PagesAreAddedAsTabSheetsAndTakenOutAgain)
{
    auto *const form = m_editor.Open(dropped());
    ASSERT_NE(form, nullptr);
    const auto untouched = form->contents();
    auto *const control = form->mainContainer()->findChild<QWidget *>(u"extPageControl"_s);
    ASSERT_NE(control, nullptr);
    auto *const pages =
        qt_extension<QDesignerContainerExtension *>(m_editor.Core()->extensionManager(), control);
    const auto *const menu =
        qt_extension<QDesignerTaskMenuExtension *>(m_editor.Core()->extensionManager(), control);
    ASSERT_TRUE(pages && menu);
    EXPECT_EQ(pages->count(), 2);
    const auto choose = [&](const QString &entry) {
        for (auto *const action : menu->taskActions()) {
            if (action->text() == entry)
                action->trigger();
        }
    };
    const auto captions = [](const QDesignerContainerExtension &shown) {
        QStringList texts;
        for (int page = 0; page < shown.count(); ++page)
            texts.push_back(shown.widget(page)->property("Caption").toString());
        return texts.join(u' ').toStdString();
    };
    choose(u"New Page After"_s);
    EXPECT_EQ(captions(*pages), "Page 1 Page 3 Page 2");
    EXPECT_EQ(pages->currentIndex(), 1);
    choose(u"New Page Before"_s);
    EXPECT_EQ(captions(*pages), "Page 1 Page 4 Page 3 Page 2");
    for (int undone = 0; undone < 2; ++undone)
        form->commandHistory()->undo();
    EXPECT_EQ(withoutPlaces(form->contents()), withoutPlaces(untouched));
    for (int redone = 0; redone < 2; ++redone)
        form->commandHistory()->redo();
    EXPECT_EQ(captions(*pages), "Page 1 Page 4 Page 3 Page 2");

    // A component on the new page is saved with it.
    const std::unique_ptr<QDesignerFormWindowInterface> again(m_editor.Open(form->contents()));
    auto *const loaded = again->mainContainer()->findChild<QWidget *>(u"extPageControl"_s);
    const auto *const loadedPages =
        qt_extension<QDesignerContainerExtension *>(m_editor.Core()->extensionManager(), loaded);
    EXPECT_EQ(captions(*loadedPages), "Page 1 Page 4 Page 3 Page 2");
    EXPECT_STREQ(loadedPages->widget(2)->metaObject()->className(), "Zelmar01::TTabSheet");
}

TEST_F(DesignerTest, AClickOnATabShowsItsPage)
{
    auto *const form = m_editor.Open(dropped());
    ASSERT_NE(form, nullptr);
    auto *const control = form->mainContainer()->findChild<QWidget *>(u"extPageControl"_s);
    const auto *const pages =
        qt_extension<QDesignerContainerExtension *>(m_editor.Core()->extensionManager(), control);
    form->window()->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form->window()));
    auto *const pad = control->findChild<QWidget *>(u"__qt__passive_tabs"_s);
    ASSERT_NE(pad, nullptr);
    const auto tabs = pad->mask().boundingRect();
    QTest::mouseClick(pad, Qt::LeftButton, {}, {tabs.right() - 5, tabs.center().y()});
    EXPECT_EQ(pages->currentIndex(), 1);
    EXPECT_TRUE(form->contents().contains(u"name=\"ActivePage\""_s));
    form->commandHistory()->undo();
    EXPECT_FALSE(form->contents().contains(u"name=\"ActivePage\""_s));
}

// A form in which every property of every component has another value than at first.
TEST_F(DesignerTest, ItIsTheSameFormInTheDesignerFromUicAndFromTheLoader)
{
    const auto folder = QStringLiteral(FORMS), file = folder + u"/AllComponents.ui"_s;
    const auto before = QDir::currentPath();
    const auto restore = qScopeGuard([&] { QDir::setCurrent(before); });
    QDir::setCurrent(folder);

    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    const auto contents = QString::fromUtf8(text.readAll());
    auto *const designed = m_editor.Open(contents, file);
    ASSERT_NE(designed, nullptr);
    auto *const saved = m_editor.Open(designed->contents(), file);
    ASSERT_NE(saved, nullptr);

    QWidget compiled;
    Ui::AllComponents form;
    form.setupUi(&compiled);

    text.seek(0);
    QUiLoader loader;
    loader.addPluginPath(QStringLiteral(PLUGINS "/designer"));
    loader.setWorkingDirectory(QDir(folder));
    const std::unique_ptr<QWidget> loaded(loader.load(&text));
    ASSERT_NE(loaded, nullptr);

    const FormEditor fresh;
    const auto *const untouched = fresh.Open(dropped());
    std::set<QString> classes;
    for (const auto *const widget : Components(&compiled)) {
        classes.insert(QString::fromLatin1(widget->metaObject()->className()));
        for (const auto &property : Published(*widget)) {
            SCOPED_TRACE(widget->metaObject()->className() + std::string("::") + property.name());
            const auto in = [&](const QWidget *other) {
                const auto *const same = other->findChild<QWidget *>(widget->objectName());
                const auto *const meta = same ? same->metaObject() : nullptr;
                const int index = meta ? meta->indexOfProperty(property.name()) : -1;
                return index < 0 ? std::string("missing") : Text(meta->property(index), *same).toStdString();
            };
            const auto value = Text(property, *widget).toStdString();
            EXPECT_EQ(in(loaded.get()), value);
            EXPECT_EQ(in(designed->mainContainer()), value);
            EXPECT_EQ(in(saved->mainContainer()), value);
            // What follows from other properties: tabs that are buttons stand at the top, a label with a
            // colour has none of its parent's, and the active page has a tab.
            static const std::set<QByteArray> following{"ParentColor", "TabPosition", "TabVisible"};
            if (!following.contains(property.name())) {
                EXPECT_NE(in(untouched->mainContainer()), value) << "the form does not set it";
            }
        }
    }
    EXPECT_EQ(classes.size(), 36U); // and the pages
}

TEST_F(DesignerTest, ComponentsWithoutAWindowAreSeenOnlyWhileAFormIsDesigned)
{
    auto *const form = m_editor.Open(dropped());
    ASSERT_NE(form, nullptr);
    auto text = form->contents().toUtf8();
    QBuffer buffer(&text);
    QUiLoader loader;
    loader.addPluginPath(QStringLiteral(PLUGINS "/designer"));
    const std::unique_ptr<QWidget> running(loader.load(&buffer));
    ASSERT_NE(running, nullptr);
    running->show();
    form->window()->show();
    for (const auto &name : {u"dosPrint"_s, u"taskScheduler"_s, u"taskPropertiesDialog"_s}) {
        EXPECT_TRUE(form->mainContainer()->findChild<QWidget *>(name)->isVisible());
        EXPECT_FALSE(running->findChild<QWidget *>(name)->isVisible());
    }
}
