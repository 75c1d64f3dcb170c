#include <Zelmar01/package/Package.h>

#include <Zelmar01/tabs/ExtCustomTab.h>
#include <Zelmar01/tasks/DefaultTaskService.h>

namespace Zelmar01 {

namespace {

// On Windows the system's service takes COM for the thread that loads the package, and gives it back;
// elsewhere there is nothing to take.
TUnit saTask()
{
    const auto service = std::make_shared<std::shared_ptr<ITaskService>>();
    return {"saTask", [service] { *service = DefaultTaskService(); }, [service] { service->reset(); }};
}

// Names are in one order on every system, so saUtils has nothing to choose.
std::vector<TUnit> units()
{
    return {
        {"PrnCode_fm", {}, {}},
        {"DosPrint", {}, {}},
        {"zmCheckBox", {}, {}},
        {"zmCurrency", {}, {}},
        {"zmDateEdit", {}, {}},
        {"zmGauges", {}, {}},
        {"zmLookUpEd", {}, {}},
        {"zmMemo", {}, {}},
        {"zmPickEdit", {}, {}},
        {"zmSpinEdit", {}, {}},
        {"zmTextEdit", {}, {}},
        {"ExtPage", [] { TExtCustomTab::IsNewComCtl(); }, {}}, // which keeps its answer
        {"LabelURL", {}, {}},
        {"MSTask", {}, {}},
        {"NumEcran", {}, {}},
        {"saUtils", {}, {}},
        saTask(),
        {"saDialogs", {}, {}},
        {"saRegistration", {}, {}},
        {"CheckListBoxFK", {}, {}},
        {"TreeViewDescr", {}, {}},
        {"ComboBoxFk", {}, {}},
        {"zmImage", {}, {}},
        {"zmGrid", {}, {}},
    };
}

// Never freed: what is still loaded when the program ends is the system's to clear.
TStartUp &startUp()
{
    static auto *const order = new TStartUp(units());
    return *order;
}

} // namespace

TPackage::TPackage()
{
    startUp().Load();
}

TPackage::~TPackage()
{
    startUp().Unload();
}

const TStartUp &TPackage::StartUp()
{
    return startUp();
}

} // namespace Zelmar01
