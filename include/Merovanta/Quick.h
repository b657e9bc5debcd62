#pragma once

#include <Merovanta/Export.h>

namespace merovanta::quick {

/// Makes Qt Quick the library's platform and registers the QML module "Merovanta". Call it once in main(),
/// before the application object is made. Calling it again does nothing.
MEROVANTA_EXPORT void initialize();

}  // namespace merovanta::quick
