#pragma once

#include <Merovanta/Export.h>

#include <optional>

class QObject;

namespace merovanta::quick {

/// Makes Qt Quick the library's platform and registers the QML module "Merovanta". Call it once in main(),
/// before the application object is made; calling it again does nothing. The chat cannot be opened then: an
/// application with the chat calls initializeChat() (Merovanta/QuickChat.h) instead. It does not fail, and
/// what it sets up lives until the process ends. Thread: main.
MEROVANTA_EXPORT void initialize();

// The marks that QML sets as attached properties, for objects made in C++. The object is an item, a popup
// (dialog, drawer, menu) or a window; the mark is gone with it. They hold from the next picture on, whether
// or not the service names any view. Thread: main, after initialize().

/// The tag by which the service's masking list may name the object; 0 for none. In QML: `Merovanta.tag`.
MEROVANTA_EXPORT void setTag(QObject& object, int tag);

/// True covers the object in every picture, with all that is in it; false makes it an exception in something
/// covered by such a mark or by Merovanta::privacy(), but not in what the service's lists name: there, what
/// lies on plain rectangles alone shows. Nothing takes the mark away. In QML: `Merovanta.masked`.
MEROVANTA_EXPORT void setMasked(QObject& object, std::optional<bool> masked);

/// Whether the visitor's taps in the object are not reported and the agent's taps are not played back there,
/// for what a tap's place gives away, such as the keys of a PIN pad. In QML: `Merovanta.tapsPrivate`.
MEROVANTA_EXPORT void setTapsPrivate(QObject& object, bool tapsPrivate);

}  // namespace merovanta::quick
