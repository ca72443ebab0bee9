#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/Collection.h"

// What a collecting worker writes into its pipe: frames of a kind, a length and a payload. Both ends are one program,
// but a worker may have crashed or run wild: the reader takes nothing on trust.

namespace host
{
/// How a collection went besides its rows; a worker's last frame.
struct Outcome {
    bool wasFound = false;
    bool wasRefused = false;
    std::string notes;
};

/// A collection that writes its rows into a pipe.
class PipeCollection : public Collection
{
public:
    explicit PipeCollection(int pipe) : pipe_(pipe) {}
    size_t add(RowBuilder&& row) override;
    void amend(size_t row, RowBuilder&& values) override;
    void hold() override { isHolding_ = true; }
    void release() override;
    /// Writes the last frame.
    void end();

private:
    void write(std::string_view payload, uint8_t kind);

    int pipe_;
    bool isHolding_ = false;
    std::string held_;
    size_t rows_ = 0;
};

/// Takes a pipe's bytes apart as they come, for rows of one group.
class FrameReader
{
public:
    static constexpr size_t kMostRows = 1000000;
    static constexpr size_t kMostBytes = size_t{256} << 20; // of one group

    explicit FrameReader(uint32_t group) : group_(group) {}

    /// Takes bytes; false when they are no frames, or too many: nothing more is to be expected of this worker.
    bool take(std::string_view bytes);

    const std::vector<report::Row>& rows() const { return rows_; }
    std::vector<report::Row> takeRows() { return std::move(rows_); }
    /// What the last frame said; absent before it.
    const std::optional<Outcome>& outcome() const { return outcome_; }

private:
    bool takeFrame(uint8_t kind, std::string_view payload);
    bool takeRow(std::string_view payload);
    bool takeAmendment(std::string_view payload);
    bool takeOutcome(std::string_view payload);

    uint32_t group_;
    size_t bytes_ = 0;
    std::string pending_;
    std::vector<report::Row> rows_;
    std::optional<Outcome> outcome_;
};
} // namespace host
