#include <designer/FormEditor.h>
#include <support/Environment.h>
#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QDomDocument>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// What a form sets: the properties of its objects, each with the object's name.
QSet<QString> settings(const QDomElement &element)
{
    QSet<QString> found;
    for (auto child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        // The designer writes sizes and places of its own besides.
        if (child.tagName() == "property"_L1 || child.tagName() == "attribute"_L1)
            found.insert(element.attribute(u"name"_s) + u'.' + child.attribute(u"name"_s));
        else
            found.unite(settings(child));
    }
    return found;
}

QDomElement root(QDomDocument &document, const QString &form)
{
    EXPECT_TRUE(document.setContent(form));
    return document.documentElement();
}

} // namespace

TEST(DemoForms, OpenInTheDesignerAndLoseNothingWhenTheyAreSaved)
{
    const TempFolder folder;
    const EnvironmentSetting jobs("ZELMAR01_JOBS", (folder / "jobs").string());
    const FormEditor editor;
    const QDir forms(QStringLiteral(DEMO_FORMS));
    const auto names = forms.entryList({u"*.ui"_s});
    EXPECT_GT(names.size(), 10);
    for (const auto &name : names) {
        SCOPED_TRACE(name.toStdString());
        QFile file(forms.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto text = QString::fromUtf8(file.readAll());
        QDomDocument before, after;
        const auto form = root(before, text);
        const std::unique_ptr<QDesignerFormWindowInterface> designed(editor.Open(text, file.fileName()));
        ASSERT_TRUE(designed && designed->mainContainer());

        const auto widgets = form.elementsByTagName(u"widget"_s);
        for (int i = 0; i < widgets.size(); ++i) {
            const auto widget = widgets.at(i).toElement();
            const auto wanted = widget.attribute(u"class"_s);
            if (!wanted.startsWith("Zelmar01::"_L1))
                continue;
            const auto *const shown =
                designed->mainContainer()->findChild<QWidget *>(widget.attribute(u"name"_s));
            ASSERT_NE(shown, nullptr) << widget.attribute(u"name"_s).toStdString();
            EXPECT_EQ(QString::fromLatin1(shown->metaObject()->className()), wanted);
        }
        const auto lost = settings(form) - settings(root(after, designed->contents()));
        EXPECT_TRUE(lost.isEmpty()) << QStringList(lost.begin(), lost.end()).join(u' ').toStdString();
    }
}
