#pragma once

#include <cstdlib>
#include <memory>

// Owners for what C-style interfaces hand over.

struct FreeDeleter {
    void operator()(void* memory) const { free(memory); }
};

/// A text that was allocated with malloc.
using OwnedText = std::unique_ptr<char, FreeDeleter>;
