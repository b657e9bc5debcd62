#include "General/CoBrowsing/DefaultUIView.h"

#include <array>

#include "General/CoBrowsing/CoBrowsing.h"
#include "General/Log.h"
#include "General/Panoptra/Injection.h"
#include "General/WebChat/WebChat.h"
#include "Platform/Platform.h"

namespace merovanta {

std::shared_ptr<DefaultUIView> DefaultUIView::create(const View& parent) {
    auto widget = std::make_shared<DefaultUIView>();
    widget->show(parent);
    if (!widget->mNative) {
        Log::warning("Cannot load ui view");
        return nullptr;
    }
    const auto view = widget->mNative->view();
    if (!view || !view->isKindOf("DefaultUIView")) {
        Log::warning("Cannot get DefaultUIView from nib");
        return nullptr;
    }
    return widget;
}

void DefaultUIView::show(const View& parent) {
    // Each action keeps the widget alive while it runs: it may take the widget away.
    const auto action = [weak = weak_from_this()](void (DefaultUIView::*run)()) {
        return [weak, run] {
            if (const auto self = weak.lock()) (*self.*run)();
        };
    };
    mNative =
        platform::current().widgets().create(parent, {.hideClicked = action(&DefaultUIView::hideClicked),
                                                      .closeClicked = action(&DefaultUIView::closeClicked),
                                                      .openChat = action(&DefaultUIView::openChat)});
    if (!mNative) return;
    mScreen = parent.identity();
    for (const Part& part : {showButton, hideButton, buttonGroup})
        mNative->setHidden(part.element, part.isHidden);
    mNative->setHidden(WidgetView::Element::chatButton, !mIsChatActivated);
}

bool DefaultUIView::isOn(const View& screen) const {
    const auto view = mNative ? mNative->view() : nullptr;
    return view && view->isAlive() && mScreen == screen.identity();
}

bool DefaultUIView::moveTo(const View& screen) {
    mNative.reset();
    show(screen);
    if (!mNative) return false;
    mNative->setText(mText);
    Log::debug("The widget moves to the window in front");
    return true;
}

void DefaultUIView::setText(const std::string& text) {
    mText = text;
    if (mNative) mNative->setText(text);
}

void DefaultUIView::setChatActivated(bool isActivated) {
    mIsChatActivated = isActivated;
    if (mNative) mNative->setHidden(WidgetView::Element::chatButton, !isActivated);
}

void DefaultUIView::removeFromSuperview() {
    mNative.reset();
}

void DefaultUIView::hideClicked() {
    for (Part* const part : std::array{&showButton, &hideButton, &buttonGroup}) {
        part->isHidden = !part->isHidden;
        if (mNative) mNative->setHidden(part->element, part->isHidden);
    }
}

void DefaultUIView::closeClicked() {
    if (const auto coBrowsing = Injection::resolve<CoBrowsing>()) coBrowsing->hide(SessionEnd::visitor);
    removeFromSuperview();
}

void DefaultUIView::openChat() {
    if (const auto webChat = Injection::resolve<WebChat>()) {
        webChat->open(tenantId);
    } else {
        Log::error("Cannot find instance of WebChat");
    }
}

}  // namespace merovanta
