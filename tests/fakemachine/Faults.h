#pragma once

#include <string>
#include <vector>

#include "FakeMachine.h"

/// One fault of a scan: an intercepted call, or an allocation, that fails.
struct Fault {
    std::string setting; // for FAKEMACHINE_FAIL
    std::string call;    // name and subject of the call, for messages
    bool isAllocation = false;
    bool breaksOutput = false; // the report ends where the fault struck

    std::string text() const { return setting + " (" + call + ")"; }
};

/// Every call that a scan of the machine makes, with each errno that is plausible for it, and every allocation.
std::vector<Fault> planFaults(FakeMachine& machine);

/// Scans with the fault. Empty when the scan ended as it has to: by itself within 10 s with status 0 (or by abort when
/// an allocation failed), without a sanitizer's report, its output well-formed as far as it got; else what is wrong.
std::string tryFault(FakeMachine& machine, const Fault& fault);

/// What is wrong with the tags of a report, empty when nothing is; an incomplete one may end anywhere.
std::string checkReport(const std::string& report, bool complete);
