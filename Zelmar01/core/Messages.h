#pragma once

#include <cstdint>
#include <string>

namespace Zelmar01 {

/// The numbers of the library's messages, out of the range 65504 to 65535.
enum class TMessage : std::uint16_t {
    DialogTaskNotActivated = 65504, ///< %s: the job's name as it was given
    NoTaskScheduler = 65505,        ///< the properties dialog has no scheduler
    InvalidCode = 65506,            ///< followed by the bad item of a notation
    NoRightToCreate = 65507,        ///< a code file cannot be created
    DiskFull = 65508,               ///< a code file was written short
    PortNotFound = 65509,           ///< a printer port cannot be opened
    PortWriteFailed = 65510,        ///< a printer port took less than it was given
    DefaultPrinter = 65511,         ///< the printer name that stands for the current printer
    InvalidDate = 65512,            ///< a day that the calendar does not have
    InvalidTime = 65513,            ///< a time of day outside 00:00:00.000 to 23:59:59.999
    NoMoreDepartments = 65514,      ///< all codes of departments are taken
    NoMoreSections = 65515,         ///< all codes below a level are taken
    CodeNotAvailable = 65516,       ///< a code of the wrong form, or one that is taken
    LevelHasChildren = 65517,       ///< a level with levels below it cannot be deleted
    ConfirmLevelDeletion = 65518,
    LevelInUse = 65519,             ///< the database keeps a level that something refers to
    NoQueryLinked = 65520,          ///< the tree of codes has no dataset to read from
    TaskNotActivated = 65526,       ///< %s: the name of the scheduler component
    TaskNotActive = 65527,          ///< %s: the job's name
    TaskExists = 65528,             ///< %s: the job's name as it was given
    TaskIndexOutOfRange = 65529,    ///< %d: the index
    TriggerIndexOutOfRange = 65530, ///< %d: the index
    SchedulerStopped = 65531,
    NoTriggerLine = 65532,   ///< the only line of the list of triggers of a job without any
    NoTrigger = 65533,       ///< what is said of a job without triggers
    SeveralTriggers = 65534, ///< what is said of a job with more than one trigger
    NoPage = 65535,          ///< the properties dialog needs a page
};

/// The text of a message, in UTF-8: French, unless the host translates it (core/Translation.h). The name of
/// the default printer is never translated, because forms keep it.
std::string MessageText(TMessage message);

} // namespace Zelmar01
