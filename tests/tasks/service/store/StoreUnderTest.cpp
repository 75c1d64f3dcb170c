// The job store among the task services that the shared cases are run against.
#include <Zelmar01/tasks/service/store/JobStore.h>

#include <support/TempFolder.h>
#include <tasks/service/ServiceCases.h>

using namespace Zelmar01;

TServiceUnderTest MakeServiceUnderTest()
{
    const auto folder = std::make_shared<TempFolder>();
    TServiceUnderTest tested;
    tested.Folder = *folder / "jobs";
    TJobStoreOptions options;
    options.Folder = tested.Folder;
#ifdef ZELMAR01_JOB_RUNNER
    options.Runner = ZELMAR01_JOB_RUNNER;
#else
    tested.CanRun = false;
#endif
    tested.Service = std::make_shared<TJobStore>(options);
    tested.Program = u"/bin/sh";
    tested.EndsWithSeven = u"-c \"exit 7\"";
    tested.StaysForAWhile = u"-c \"exec sleep 60\"";
    tested.TearDown = folder;
    return tested;
}
