#pragma once

/// A function of this library that the program calls in place of the C library's function of that name. The own name in
/// C++ avoids a clash with the C library's declarations, which differ from build to build.
#define FAKE(result, name, ...)                                                                                        \
    extern "C" __attribute__((visibility("default"))) result fake_##name(__VA_ARGS__) asm(#name);                      \
    extern "C" result fake_##name(__VA_ARGS__)

/// A second name of such a function, for a variant that takes the same arguments.
#define FAKE_ALIAS(result, name, target, ...)                                                                          \
    extern "C" __attribute__((visibility("default"), alias(#target))) result fake_##name(__VA_ARGS__) asm(#name);
