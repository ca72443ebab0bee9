#include "host/Notes.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace host
{
void Notes::failed(std::string_view what, int error)
{
    refused_ = refused_ || error == EACCES || error == EPERM;
    note(std::string(what) + ": " + strerror(error));
}

void Notes::note(std::string text)
{
    if (std::find(notes_.begin(), notes_.end(), text) != notes_.end())
        return;
    if (notes_.size() < kMost)
        notes_.push_back(std::move(text));
    else
        ++more_;
}

std::string Notes::text() const
{
    std::string text;
    for (const std::string& note : notes_)
        text += (text.empty() ? "" : "; ") + note;
    if (more_ != 0)
        text += "; and " + std::to_string(more_) + " more";
    return text;
}
} // namespace host
