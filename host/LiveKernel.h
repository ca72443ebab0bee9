#pragma once

#include "host/Kernel.h"

namespace host
{
class Notes;

/// The kernel that this program runs on.
class LiveKernel : public Kernel
{
public:
    /// What the kernel refuses to tell, or fails to, is noted, unless notes is null; they outlive the kernel.
    explicit LiveKernel(Notes* notes = nullptr) : notes_(notes) {}

    bool isRecording() const override { return false; }

protected:
    /// Every text of an answer is valid UTF-8, so that a recording of it says the same.
    nlohmann::json answer(std::string_view question, std::string_view argument) const override;

private:
    Notes* notes_;
};
} // namespace host
