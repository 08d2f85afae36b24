#include "filters/gui/FilterCommands.h"

#include "filters/gui/FilterDialog.h"
#include "filters/gui/FilterRunner.h"

#include <utility>

namespace kestrune {

namespace {

struct CRunnerGuard {
    CRunnerGuard() = default;
    ~CRunnerGuard() { SetFilterRunner({}); }
    CRunnerGuard(const CRunnerGuard&) = delete;
    CRunnerGuard& operator=(const CRunnerGuard&) = delete;
};

} // namespace

void RegisterFilterCommands(CCommandTarget& target, std::function<CPaintImage*()> image, CProfile& profile,
                            QWidget* pParent)
{
    const auto add = [&](int nCommand) {
        if (!CanRunFilterCommand(nCommand))
            return;
        target.OnCommandId(
            nCommand,
            [image, nCommand, &profile, pParent] {
                if (IsFilterRunning())
                    return;
                SetFilterRunner([pParent](const std::function<void()>& work) { RunWithWaitCursor(work, pParent); });
                CFilterDialogHost dialogs(profile, pParent);
                const CRunnerGuard guard; // the canvas may be gone when the next filter runs
                RouteFilterCommand(image(), nCommand, dialogs);
            },
            [image](CommandState& state) { state.bEnabled = image() != nullptr && !IsFilterRunning(); });
    };
    for (const FilterRow& row : FilterTable())
        add(row.nCommand);
    for (const int nCommand : BranchlessFilterCommands())
        add(nCommand);
}

} // namespace kestrune
