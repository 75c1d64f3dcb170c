#pragma once

#include <QString>

namespace Shop {

class MainWindow;

/// Goes round the page of the scheduled jobs by itself, as a user would: adds two jobs, changes when the
/// second one runs, and has the first one run at once. Returns what it saw, a line for each job. Raises an
/// exception when something does not come about.
QString GoRoundTasks(MainWindow &window);

} // namespace Shop
