#pragma once

#include <Zelmar01/tasks/service/store/RunnerProcess.h>

namespace Zelmar01 {

/// Runs a job from its start to its end, in this process, which does nothing else and has no thread beside
/// this one. What happens goes into the job's file and into the log of its folder; as soon as the program was
/// started, or could not be, a TRunnerReport is written to `reportFile`, which is closed.
///
/// The program is ended when the job's limit or the duration of its trigger is over, when the job ends with
/// the mains and the computer goes on battery, and when this process is asked to end: first by a request to
/// all processes of its session, then, after 3 minutes or the seconds of ZELMAR01_JOB_GRACE, by force. If
/// this process is killed, the program itself is asked to end (Linux).
void RunJob(const TRunRequest &request, int reportFile);

} // namespace Zelmar01
