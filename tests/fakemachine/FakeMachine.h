#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

/// One row of the report: its attributes in the order in which they were written.
struct ReportRow {
    std::vector<std::pair<std::string, std::string>> values; // element name -> text, unescaped
    std::vector<std::string> keys;                           // names of the attributes marked as keys

    /// The value, or null when the row has none of that name.
    const std::string* find(const std::string& name) const;
};

/// What one scan left behind.
struct ScanResult {
    int exitStatus = -1; // -1 when a signal ended it
    int signal = 0;
    bool timedOut = false;                    // it was killed after the time limit
    std::string report;                       // standard output
    std::string errors;                       // standard error
    std::string log;                          // libInvHW.log
    std::map<std::string, std::string> files; // all files of the working folder, by name

    /// True when the program ended by itself with status 0.
    bool ended() const { return exitStatus == 0 && !timedOut; }

    /// The rows of a group by its element name ("MemoryModules"), in the report's order.
    std::vector<ReportRow> rows(const std::string& group) const;
    /// One value, row counted from 0; "(no row)" or "(no value)" when it is not there.
    std::string value(const std::string& group, size_t row, const std::string& name) const;
    bool has(const std::string& group, size_t row, const std::string& name) const;
    /// True when the log contains text.
    bool logHas(const std::string& text) const { return log.find(text) != std::string::npos; }
};

/// How a scan is run.
struct ScanOptions {
    std::string program;                // in place of the scanner
    std::vector<std::string> arguments; // of that program
    int secondsAllowed = 30;
    std::string faults;                             // FAKEMACHINE_FAIL
    std::string countFile;                          // FAKEMACHINE_COUNT
    std::map<std::string, std::string> environment; // beyond what the machine says
    std::string standardOutput;       // a real file that takes the report in place of the captured one ("/dev/full")
    std::vector<int> closedStreams;   // descriptors among 0, 1 and 2 that are closed at the start
    unsigned long addressSpace = 0;   // bytes, 0: unlimited
    unsigned long openFiles = 0;      // descriptors, 0: unlimited
    unsigned long fileSize = 0;       // bytes of any file that is written, 0: unlimited
    unsigned long stackSize = 0;      // bytes, 0: as the test has it
    std::string workingFolder;        // of another machine's scans, in place of this one's
    bool removeWorkingFolder = false; // the folder is gone when the program starts
};

/// A machine in a temporary folder, to be scanned by the built program. What is not given to it does not exist on it.
/// A relative path of the program leads to the working folder, which lasts as long as this object.
class FakeMachine
{
public:
    /// A machine on which nothing can be read.
    FakeMachine();
    /// A copy of a recorded machine, to which more can be given.
    static FakeMachine open(const std::string& folder);
    FakeMachine(FakeMachine&& other) noexcept;
    FakeMachine& operator=(FakeMachine&&) = delete;
    FakeMachine(const FakeMachine&) = delete;
    FakeMachine& operator=(const FakeMachine&) = delete;
    ~FakeMachine();

    /// A file by its absolute path on the machine.
    FakeMachine& file(const std::string& path, const std::string& text);
    /// Takes a file, folder or device node away.
    FakeMachine& without(const std::string& path);
    /// A line of machine.conf ("clock 1066737909").
    FakeMachine& conf(const std::string& line);
    /// What a command prints, and how it ends.
    FakeMachine& command(const std::string& commandLine, const std::string& output, int exitStatus = 0);
    /// The same for a command that writes to a redirected standard error only.
    FakeMachine& commandErrors(const std::string& commandLine, const std::string& errors, int exitStatus = 1);
    /// popen of this command line fails with this errno.
    FakeMachine& commandFails(const std::string& commandLine, const std::string& errnoName = "ENOMEM");
    /// A device node by its path ("/dev/hda"), with the text of its answers.
    FakeMachine& device(const std::string& path, const std::string& text);
    /// /dev/mem, as the text of a memory.txt.
    FakeMachine& memory(const std::string& text);
    /// A variable of the scan's environment.
    FakeMachine& env(const std::string& name, const std::string& value);
    /// A file of the working folder, there before the scan.
    FakeMachine& startFile(const std::string& name, const std::string& text);

    ScanResult scan(const ScanOptions& options = {});

    /// The temporary folders of the machine's record and of the scan.
    std::string folder() const { return base_ + "/machine"; }
    std::string workingFolder() const { return base_ + "/scratch"; }

private:
    std::vector<std::string> environment(const ScanOptions& options) const;
    void addCommand(const std::string& commandLine, const std::string& kind, const std::string& text, int exitStatus);

    std::string base_;
    unsigned commandCount_ = 0;
};

/// The text of a file of the real computer; empty when it cannot be read.
std::string readTextFile(const std::string& path);
void writeTextFile(const std::string& path, const std::string& text);
/// The text with more put in before the first place that reads like this; unchanged when there is none.
std::string withInserted(const std::string& text, const std::string& before, const std::string& more);
