#pragma once

#include <Merovanta/Export.h>

namespace merovanta::quick {

/// In place of initialize(), for an application with the chat: does what that does and prepares the web
/// engine that shows the chat's page. Link Merovanta::QuickChat. Call it once in main(), before the
/// application object is made: the engine needs OpenGL contexts to be shared, which it sets up here. Calling
/// it again does nothing. It does not fail, and what it sets up lives until the process ends. Thread: main.
MEROVANTA_EXPORT void initializeChat();

}  // namespace merovanta::quick
