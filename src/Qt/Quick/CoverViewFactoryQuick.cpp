#include "Qt/Quick/CoverViewFactoryQuick.h"

namespace merovanta::quick {

std::unique_ptr<CoverView> CoverViewFactoryQuick::create(const View& /*parent*/,
                                                         const std::string& /*className*/) {
    return nullptr;
}

}  // namespace merovanta::quick
