#pragma once

/// The components over the task service, all of them.
#include <Zelmar01/tasks/TaskErrors.h>
#include <Zelmar01/tasks/TaskItem.h>
#include <Zelmar01/tasks/TaskScheduler.h>
#include <Zelmar01/tasks/TaskTriggers.h>
