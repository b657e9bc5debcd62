#include "InMemory/ApplicationInMemory.h"

#include <algorithm>

#include "InMemory/ViewControllerInMemory.h"

namespace merovanta::inmemory {

std::shared_ptr<ViewController> ApplicationInMemory::keyWindowRootViewController() {
    return ViewControllerInMemory::handle(root);
}

bool ApplicationInMemory::classExists(std::string_view name) {
    return std::find(classes.begin(), classes.end(), name) != classes.end();
}

}  // namespace merovanta::inmemory
