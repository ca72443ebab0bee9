#pragma once

#include "host/Kernel.h"
#include "host/record/KernelRecording.h"

namespace host
{
/// Asks another kernel and keeps what it answered, that it has no answer too. A question is asked once: who asks again
/// gets what the recording will say.
class RecordingKernel : public Kernel
{
public:
    /// Both outlive this kernel.
    RecordingKernel(const Kernel& asked, KernelRecording& recording)
        : Kernel(nullptr), asked_(asked), recording_(recording)
    {
    }

    bool isRecording() const override { return false; }
    bool mayHang(std::string_view mountPoint) const override;
    void keepFileSystemSize(std::string_view mountPoint, const std::optional<FileSystemSize>& size) const override;

protected:
    nlohmann::json answer(std::string_view question, std::string_view argument) const override;

private:
    const Kernel& asked_;
    KernelRecording& recording_;
};
} // namespace host
