#pragma once

/// Marks what a host application may use when the library is built with hidden symbols.
#define MEROVANTA_EXPORT __attribute__((visibility("default")))

/// Marks what one of the shared libraries uses of another: no interface for host applications.
#define MEROVANTA_INTERNAL MEROVANTA_EXPORT
