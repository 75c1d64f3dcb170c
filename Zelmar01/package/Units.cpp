#include <Zelmar01/package/Units.h>

#include <Zelmar01/controls/DateTimePickerPlus.h>
#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/controls/NumEcran.h>
#include <Zelmar01/controls/TimeEdit.h>
#include <Zelmar01/controls/zmCheckBox.h>
#include <Zelmar01/controls/zmCurrency.h>
#include <Zelmar01/controls/zmDateEdit.h>
#include <Zelmar01/controls/zmGauges.h>
#include <Zelmar01/controls/zmImage.h>
#include <Zelmar01/controls/zmLabel.h>
#include <Zelmar01/controls/zmLookUpEd.h>
#include <Zelmar01/controls/zmMemo.h>
#include <Zelmar01/controls/zmPickEdit.h>
#include <Zelmar01/controls/zmSpinEdit.h>
#include <Zelmar01/controls/zmTextEdit.h>
#include <Zelmar01/descrtree/TreeViewDescr.h>
#include <Zelmar01/keylists/CheckListBoxFK.h>
#include <Zelmar01/keylists/ComboBoxFk.h>
#include <Zelmar01/keylists/DBComboBoxEditFk.h>
#include <Zelmar01/keylists/zmGrid.h>
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
    RegisterComponents(PalettePage,
                       {ControlClass<TzmCheckEdit>("TzmCheckEdit", "Zelmar01/controls/zmCheckBox.h"),
                        ControlClass<TzmDBCheckEdit>("TzmDBCheckEdit", "Zelmar01/controls/zmCheckBox.h")});
}

void zmCurrency::Register()
{
    RegisterComponents(
        PalettePage,
        {ControlClass<TzmCurrencyEdit>("TzmCurrencyEdit", "Zelmar01/controls/zmCurrency.h"),
         ControlClass<TzmDBCurrencyEdit>("TzmDBCurrencyEdit", "Zelmar01/controls/zmCurrency.h")});
}

void zmDateEdit::Register()
{
    RegisterComponents(
        PalettePage,
        {ControlClass<tzmDateEdit>("tzmDateEdit", "Zelmar01/controls/zmDateEdit.h"),
         ControlClass<tzmTimeEdit>("tzmTimeEdit", "Zelmar01/controls/TimeEdit.h"),
         ControlClass<tzmDBDateEdit>("tzmDBDateEdit", "Zelmar01/controls/zmDateEdit.h"),
         ControlClass<TDateTimePickerPlus>("TDateTimePickerPlus", "Zelmar01/controls/DateTimePickerPlus.h"),
         ControlClass<tzmDateEditJourMois>("tzmDateEditJourMois", "Zelmar01/controls/zmDateEdit.h")});
}

void zmGauges::Register()
{
    RegisterComponents(PalettePage, {ControlClass<TzmGauge>("TzmGauge", "Zelmar01/controls/zmGauges.h")});
}

void zmLookUpEd::Register()
{
    RegisterComponents(PalettePage,
                       {ControlClass<TzmLookupEdit>("TzmLookupEdit", "Zelmar01/controls/zmLookUpEd.h"),
                        ControlClass<TzmDBLookupEdit>("TzmDBLookupEdit", "Zelmar01/controls/zmLookUpEd.h")});
}

void zmMemo::Register()
{
    RegisterComponents(PalettePage, {ControlClass<TzmMemo>("TzmMemo", "Zelmar01/controls/zmMemo.h"),
                                     ControlClass<TzmDBMemo>("TzmDBMemo", "Zelmar01/controls/zmMemo.h")});
}

void zmPickEdit::Register()
{
    RegisterComponents(PalettePage,
                       {ControlClass<TzmPickEdit>("TzmPickEdit", "Zelmar01/controls/zmPickEdit.h")});
}

void zmSpinEdit::Register()
{
    RegisterComponents(PalettePage,
                       {ControlClass<TzmSpinEdit>("TzmSpinEdit", "Zelmar01/controls/zmSpinEdit.h"),
                        ControlClass<TzmDBSpinEdit>("TzmDBSpinEdit", "Zelmar01/controls/zmSpinEdit.h")});
}

void zmTextEdit::Register()
{
    RegisterComponents(PalettePage, {ControlClass<TzmEdit>("TzmEdit", "Zelmar01/controls/zmTextEdit.h"),
                                     ControlClass<TzmDBEdit>("TzmDBEdit", "Zelmar01/controls/zmTextEdit.h"),
                                     ControlClass<TzmLabel>("TzmLabel", "Zelmar01/controls/zmLabel.h")});
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
    RegisterComponents(PalettePage, {ControlClass<TLabelURL>("TLabelURL", "Zelmar01/controls/LabelURL.h")});
}

void NumEcran::Register()
{
    RegisterComponents(PalettePage,
                       {ControlClass<Tzm_NumEcran>("Tzm_NumEcran", "Zelmar01/controls/NumEcran.h")});
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
    RegisterComponents(PalettePage, {ControlClass<TzmImage>("TzmImage", "Zelmar01/controls/zmImage.h"),
                                     ControlClass<TzmDBImage>("TzmDBImage", "Zelmar01/controls/zmImage.h")});
}

void zmGrid::Register()
{
    RegisterComponents(PalettePage, {ControlClass<TzmGrid>("TzmGrid", "Zelmar01/keylists/zmGrid.h")});
}

} // namespace Zelmar01
