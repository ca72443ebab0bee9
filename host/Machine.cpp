#include "host/Machine.h"

#include "host/LiveKernel.h"
#include "host/RecordedKernel.h"
#include "host/Root.h"
#include "host/TimeZone.h"

namespace host
{
namespace
{
// The zone is asked for by every worker and is no source of any group: what its reading comes to is nobody's note.
TimeZone readZone(const std::string& folder, RootWatcher* watcher)
{
    Notes notes;
    return TimeZone::of(Root(folder, notes, watcher));
}

// The machine that this program runs on.
class LiveMachine : public OpenMachine
{
public:
    LiveMachine(const std::string& folder, Notes& notes, Deadline deadline)
        : root_(folder, notes), kernel_(&notes),
          zone_(readZone(folder, nullptr)), machine_{root_, kernel_, zone_, deadline}
    {
    }
    const Machine& machine() const override { return machine_; }

private:
    Root root_;
    LiveKernel kernel_;
    TimeZone zone_;
    Machine machine_;
};

// A copy of a machine's files, with what its kernel answered where that was recorded.
class CopiedMachine : public OpenMachine
{
public:
    CopiedMachine(const std::string& folder, const KernelRecording& recording, Notes& notes, Deadline deadline)
        : errors_(recording), root_(folder, notes, &errors_), kernel_(recording, &notes),
          zone_(readZone(folder, &errors_)), machine_{root_, kernel_, zone_, deadline}
    {
    }
    const Machine& machine() const override { return machine_; }

private:
    RecordedErrors errors_;
    Root root_;
    RecordedKernel kernel_;
    TimeZone zone_;
    Machine machine_;
};
} // namespace

bool MachineSource::prepare(std::string& reason)
{
    Notes notes;
    if (!Root(root_, notes).isOpen()) {
        reason = root_ + ": no folder that can be read";
        return false;
    }
    return isLive() || readKernelRecording(root_, recording_, reason);
}

std::unique_ptr<OpenMachine> MachineSource::open(Notes& notes, Deadline deadline) const
{
    if (isLive())
        return std::make_unique<LiveMachine>(root_, notes, deadline);
    return std::make_unique<CopiedMachine>(root_, recording_, notes, deadline);
}

report::DateTime MachineSource::date() const
{
    Notes notes;
    const std::unique_ptr<OpenMachine> machine = open(notes, Deadline());
    return machine->machine().zone.local(machine->machine().kernel.clock());
}
} // namespace host
