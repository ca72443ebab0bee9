#include "com/VexDebug.h"

#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "com/VexGroup.h"

namespace
{

constexpr char kDefaultLogName[] = "libInvHW.log";
constexpr char kBackupSuffix[] = ".bk";

int32_t useCount = 0;
char _vexLogFileName[2048];
time_t debugStartTime;
time_t debugEndTime;
int (*_vexOutputFunction)(const char* text) = nullptr;

bool fileExists(const char* path)
{
    struct stat status;
    return stat(path, &status) == 0;
}

// Keeps one previous log, under the log's name with ".bk" behind it.
void rotateLog(const char* logName)
{
    char backupName[sizeof _vexLogFileName + sizeof kBackupSuffix];
    snprintf(backupName, sizeof backupName, "%s%s", logName, kBackupSuffix);
    if (!fileExists(logName))
        return;
    if (fileExists(backupName))
        remove(backupName);
    rename(logName, backupName);
}

// The log is written as root into a folder that may be anybody's: a link planted under its name is not followed.
FILE* openLog(const char* logName)
{
    const int descriptor = open(logName, O_RDWR | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return nullptr;
    FILE* stream = fdopen(descriptor, "w+");
    if (stream == nullptr)
        close(descriptor);
    return stream;
}

} // namespace

uint32_t _vexDebugLevel = 0;
uint32_t _vexDebugCategory = 0;
uint32_t _vexLogToFile = 1;
FILE* _vexFilePtr = nullptr;

// "-" as often as a frame's rule is wide: 77 round a collector's lines, 78 round the whole log.
#define RULE_77 "-----------------------------------------------------------------------------"
#define RULE_78 RULE_77 "-"
static_assert(sizeof RULE_77 == 77 + 1);

const char* vexTimeLine(time_t time)
{
    const char* text = ctime(&time);
    return text == nullptr ? "\n" : text;
}

void VexInitDebug(const char* path)
{
    if (++useCount > 1)
        return;
    time(&debugStartTime);
    snprintf(_vexLogFileName, sizeof _vexLogFileName, "%s", path == nullptr || *path == '\0' ? kDefaultLogName : path);
    _vexOutputFunction = VexOutput;
    if (_vexLogToFile != 0) {
        rotateLog(_vexLogFileName);
        if (_vexFilePtr == nullptr)
            _vexFilePtr = openLog(_vexLogFileName);
        if (_vexFilePtr == nullptr) {
            _vexLogToFile = 0;
            fprintf(stderr, "The %s file is read only.\n", _vexLogFileName);
        }
    }
    if (_vexDebugCategory != 0 && (_vexDebugLevel & VEX_LEVEL_MAIN) != 0) {
        VexPrintf("\n/" RULE_78 "\\");
        VexPrintf("\nStart Time: %s", vexTimeLine(debugStartTime));
    }
}

int VexPrintf(const char* format, ...)
{
    if (useCount == 0)
        VexInitDebug(nullptr);
    char text[2048] = "";
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return _vexOutputFunction == nullptr ? 0 : _vexOutputFunction(text);
}

void VexTermDebug()
{
    if (useCount == 1) {
        time(&debugEndTime);
        // The opening lines depend on the main level, these on the detail level; readers of old logs know it so.
        if (_vexDebugCategory != 0 && (_vexDebugLevel & VEX_LEVEL_DETAIL) != 0) {
            VexPrintf("\n\nEnd   Time: %s", vexTimeLine(debugEndTime));
            VexPrintf("\\" RULE_78 "/");
        }
        if (_vexFilePtr != nullptr) {
            fclose(_vexFilePtr);
            _vexFilePtr = nullptr;
        }
    }
    --useCount;
}

VexGroupFrame::VexGroupFrame(uint32_t category, const char* name) : category_(category), name_(name)
{
    VEX_LOG(category_, VEX_LEVEL_MAIN, "\n\n/" RULE_77 "\\");
    VEX_LOG(category_, VEX_LEVEL_MAIN, "\nBegin Group %s getTable()", name_);
}

void VexGroupFrame::close()
{
    if (!open_)
        return;
    open_ = false;
    VEX_LOG(category_, VEX_LEVEL_MAIN, "\nEnd Group %s getTable()", name_);
    VEX_LOG(category_, VEX_LEVEL_MAIN, "\n\\" RULE_77 "/\n");
}
