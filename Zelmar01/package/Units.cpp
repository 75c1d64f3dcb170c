#include <Zelmar01/package/Units.h>

#include <Zelmar01/descrtree/TreeViewDescr.h>
#include <Zelmar01/keylists/CheckListBoxFK.h>
#include <Zelmar01/keylists/ComboBoxFk.h>
#include <Zelmar01/keylists/DBComboBoxEditFk.h>
#include <Zelmar01/package/DosPrintHolder.h>
#include <Zelmar01/package/RegisterComponents.h>
#include <Zelmar01/package/TaskPropertiesDialogHolder.h>
#include <Zelmar01/package/TaskSchedulerHolder.h>
#include <Zelmar01/tabs/ExtPageControl.h>
#include <Zelmar01/tabs/ExtTabControl.h>

namespace Zelmar01 {

void RegisterAllUnits()
{
    for (const auto &unit : RegisteringUnits)
        unit.Register();
}

// The printer is registered by the unit of its dialog.
void PrnCode_fm::Register()
{
    RegisterComponents(PalettePage,
                       {ControlClass<TDosPrintHolder>("TDosPrint", "Zelmar01/package/DosPrintHolder.h")});
}

void zmCheckBox::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmCurrency::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmDateEdit::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmGauges::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmLookUpEd::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmMemo::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmPickEdit::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmSpinEdit::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmTextEdit::Register()
{
    RegisterComponents(PalettePage, {});
}

void ExtPage::Register()
{
    RegisterComponents(
        PalettePage,
        {ControlClass<TExtPageControl>("TExtPageControl", "Zelmar01/tabs/ExtPageControl.h"),
         ControlClass<TExtPageControlTag>("TExtPageControlTag", "Zelmar01/tabs/ExtPageControl.h"),
         ControlClass<TExtTabControl>("TExtTabControl", "Zelmar01/tabs/ExtTabControl.h")});
}

void LabelURL::Register()
{
    RegisterComponents(PalettePage, {});
}

void NumEcran::Register()
{
    RegisterComponents(PalettePage, {});
}

void saRegistration::Register()
{
    RegisterComponents(
        PalettePage,
        {ControlClass<TTaskSchedulerHolder>("TTaskScheduler", "Zelmar01/package/TaskSchedulerHolder.h"),
         ControlClass<TTaskPropertiesDialogHolder>("TTaskPropertiesDialog",
                                                   "Zelmar01/package/TaskPropertiesDialogHolder.h")});
}

void CheckListBoxFK::Register()
{
    RegisterComponents(PalettePage, {ControlClass<TCheckListBoxFK>("TCheckListBoxFK",
                                                                   "Zelmar01/keylists/CheckListBoxFK.h")});
}

void TreeViewDescr::Register()
{
    RegisterComponents(
        PalettePage, {ControlClass<TTreeViewDescr>("TTreeViewDescr", "Zelmar01/descrtree/TreeViewDescr.h")});
}

void ComboBoxFk::Register()
{
    RegisterComponents(
        PalettePage,
        {ControlClass<TComboBoxFk>("TComboBoxFk", "Zelmar01/keylists/ComboBoxFk.h"),
         ControlClass<TDBComboBoxEditFk>("TDBComboBoxEditFk", "Zelmar01/keylists/DBComboBoxEditFk.h")});
}

void zmImage::Register()
{
    RegisterComponents(PalettePage, {});
}

void zmGrid::Register()
{
    RegisterComponents(PalettePage, {});
}

} // namespace Zelmar01
