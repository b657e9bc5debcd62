#include "Qt/Quick/CoverViewFactoryQuick.h"

#include <QtQuick/QQuickItem>
#include <utility>

#include "Qt/Quick/CoverViewQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

std::unique_ptr<CoverView> CoverViewFactoryQuick::create(const View& parent, const std::string& className,
                                                         std::function<void()> dismissed) {
    QQuickItem* const item = ViewQuick::itemInWindow(parent);
    if (item == nullptr) return nullptr;
    auto cover = std::make_unique<CoverViewQuick>(std::move(dismissed));
    if (!cover->lay(*item, QString::fromStdString(className))) return nullptr;
    return cover;
}

}  // namespace merovanta::quick
