#pragma once

#include <array>

/// The units that register components with a form designer. Each has a procedure that calls
/// RegisterComponents() once, with the page PalettePage and the classes of the unit. Together they are the
/// list of the components of this library; RegisterComponents.h says who takes it.
namespace Zelmar01 {

/// The page of the palette that all components are on.
inline constexpr const char *PalettePage = "Zelmar01";

// clang-format off
namespace PrnCode_fm { void Register(); }
namespace zmCheckBox { void Register(); }
namespace zmCurrency { void Register(); }
namespace zmDateEdit { void Register(); }
namespace zmGauges { void Register(); }
namespace zmLookUpEd { void Register(); }
namespace zmMemo { void Register(); }
namespace zmPickEdit { void Register(); }
namespace zmSpinEdit { void Register(); }
namespace zmTextEdit { void Register(); }
namespace ExtPage { void Register(); }
namespace LabelURL { void Register(); }
namespace NumEcran { void Register(); }
namespace saRegistration { void Register(); }
namespace CheckListBoxFK { void Register(); }
namespace TreeViewDescr { void Register(); }
namespace ComboBoxFk { void Register(); }
namespace zmImage { void Register(); }
namespace zmGrid { void Register(); }
// clang-format on

/// A unit and its procedure.
struct TRegisteringUnit
{
    const char *Name;
    void (*Register)();
};

/// All of them, in the order of the palette.
inline constexpr std::array RegisteringUnits = {
    TRegisteringUnit{"PrnCode_fm", PrnCode_fm::Register},
    TRegisteringUnit{"zmCheckBox", zmCheckBox::Register},
    TRegisteringUnit{"zmCurrency", zmCurrency::Register},
    TRegisteringUnit{"zmDateEdit", zmDateEdit::Register},
    TRegisteringUnit{"zmGauges", zmGauges::Register},
    TRegisteringUnit{"zmLookUpEd", zmLookUpEd::Register},
    TRegisteringUnit{"zmMemo", zmMemo::Register},
    TRegisteringUnit{"zmPickEdit", zmPickEdit::Register},
    TRegisteringUnit{"zmSpinEdit", zmSpinEdit::Register},
    TRegisteringUnit{"zmTextEdit", zmTextEdit::Register},
    TRegisteringUnit{"ExtPage", ExtPage::Register},
    TRegisteringUnit{"LabelURL", LabelURL::Register},
    TRegisteringUnit{"NumEcran", NumEcran::Register},
    TRegisteringUnit{"saRegistration", saRegistration::Register},
    TRegisteringUnit{"CheckListBoxFK", CheckListBoxFK::Register},
    TRegisteringUnit{"TreeViewDescr", TreeViewDescr::Register},
    TRegisteringUnit{"ComboBoxFk", ComboBoxFk::Register},
    TRegisteringUnit{"zmImage", zmImage::Register},
    TRegisteringUnit{"zmGrid", zmGrid::Register},
};

/// Calls the procedure of each unit, in this order.
void RegisterAllUnits();

} // namespace Zelmar01
