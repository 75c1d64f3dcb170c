#include "DesignerLooks.h"

#include <Zelmar01/core/Exceptions.h>

#include <QCoreApplication>

#include <map>

namespace Zelmar01 {

namespace {

struct TLook
{
    const char *ObjectName, *ToolTip;
    int Width = 0, Height = 0;
    bool HasPages = false, TakesOthers = false;
    const char *PlainTexts = "";
};

const std::map<std::string, TLook> looks = {
    {"TDosPrint",
     {"dosPrint", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Receipt printer and cash drawer"), 0, 0, false,
      false, "PrnName PrnFile"}},
    {"TzmCheckEdit", {"checkEdit", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Check box"), 0, 0}},
    {"TzmDBCheckEdit",
     {"dbCheckEdit", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Check box on a field"), 0, 0, false, false,
      "DataField"}},
    {"TExtPageControl",
     {"extPageControl", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Pages behind coloured tabs"), 320, 200, true,
      false, "ActivePage"}},
    {"TExtPageControlTag",
     {"extPageControlTag",
      QT_TRANSLATE_NOOP("Zelmar01::Palette", "Pages behind coloured tabs, with glyphs chosen by their Tag"),
      320, 200, true, false, "ActivePage"}},
    {"TExtTabControl",
     {"extTabControl", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Coloured tabs over one page"), 320, 200, false,
      true}},
    {"TTaskScheduler",
     {"taskScheduler", QT_TRANSLATE_NOOP("Zelmar01::Palette", "The jobs of the task scheduler"), 0, 0}},
    {"TTaskPropertiesDialog",
     {"taskPropertiesDialog", QT_TRANSLATE_NOOP("Zelmar01::Palette", "The property sheet of a job"), 0, 0,
      false, false, "TaskName TaskScheduler"}},
    {"TCheckListBoxFK",
     {"checkListBoxFK", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Check list of the rows of a dataset"), 160,
      180}},
    {"TTreeViewDescr",
     {"treeViewDescr", QT_TRANSLATE_NOOP("Zelmar01::Palette", "The tree of the article codes"), 240, 260,
      false, false, "FichierSortie"}},
    {"TComboBoxFk",
     {"comboBoxFk", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Combo box of the rows of a dataset"), 160, 28}},
    {"TDBComboBoxEditFk",
     {"dbComboBoxEditFk", QT_TRANSLATE_NOOP("Zelmar01::Palette", "Combo box of keys on a field"), 160, 28,
      false, false, "DataField KeyField ListField"}},
};

} // namespace

TDesignerLook LookOf(const std::string &className)
{
    const auto found = looks.find(className);
    if (found == looks.end())
        throw EInvalidOperation("Composant inconnu de la palette : " + className);
    const auto &look = found->second;
    return {QString::fromLatin1(look.ObjectName),
            QCoreApplication::translate("Zelmar01::Palette", look.ToolTip),
            {look.Width, look.Height},
            look.HasPages,
            look.TakesOthers,
            QString::fromLatin1(look.PlainTexts).split(u' ', Qt::SkipEmptyParts)};
}

} // namespace Zelmar01
