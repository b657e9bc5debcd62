#pragma once

#include <Merovanta/Export.h>

namespace merovanta::quick {

/// Makes Qt Quick the library's platform, prepares the web engine that shows the chat, and registers the QML
/// module "Merovanta". Call it once in main(), before the application object is made: the engine needs OpenGL
/// contexts to be shared, which it sets up here. Calling it again does nothing. It does not
/// fail, and what it sets up lives until the process ends. Thread: main.
MEROVANTA_EXPORT void initialize();

}  // namespace merovanta::quick
