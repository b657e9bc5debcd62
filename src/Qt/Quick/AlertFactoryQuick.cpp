#include "Qt/Quick/AlertFactoryQuick.h"

#include <QtQuick/QQuickItem>
#include <utility>

#include "Qt/Quick/AlertQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace merovanta::quick {

std::unique_ptr<Alert> AlertFactoryQuick::present(const ViewController& over, const AlertTexts& texts,
                                                  std::function<void(bool accepted)> answered) {
    const auto view = over.view();
    const QQuickItem* const item = view ? ViewQuick::itemInWindow(*view) : nullptr;
    if (item == nullptr) return nullptr;
    auto alert = std::make_unique<AlertQuick>(std::move(answered));
    if (!alert->present(*item->window(), texts)) return nullptr;
    return alert;
}

}  // namespace merovanta::quick
