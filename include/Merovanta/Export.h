#pragma once

/// Marks what a host application may use when the library is built with hidden symbols.
#define MEROVANTA_EXPORT __attribute__((visibility("default")))
