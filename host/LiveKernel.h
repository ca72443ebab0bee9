#pragma once

#include "host/Kernel.h"

namespace host
{
/// The kernel that this program runs on.
class LiveKernel : public Kernel
{
public:
    /// See Kernel.
    explicit LiveKernel(Notes* notes = nullptr) : Kernel(notes) {}

    bool isRecording() const override { return false; }

protected:
    /// Every text of an answer is valid UTF-8, so that a recording of it says the same.
    nlohmann::json answer(std::string_view question, std::string_view argument) const override;
};
} // namespace host
