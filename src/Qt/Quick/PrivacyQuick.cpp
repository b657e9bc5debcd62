#include "Qt/Quick/PrivacyQuick.h"

#include <Merovanta/Merovanta.h>

#include <QtQml/QQmlEngine>

namespace merovanta::quick {

PrivacyQuick& PrivacyQuick::instance() {
    static auto* const privacy = [] {
        auto* const made = new PrivacyQuick();
        // The engine must not take it for garbage.
        QQmlEngine::setObjectOwnership(made, QQmlEngine::CppOwnership);
        return made;
    }();
    return *privacy;
}

bool PrivacyQuick::fixedRectangles() const {
    return Merovanta::privacy().fixedRectangles();
}

void PrivacyQuick::setFixedRectangles(bool painted) {
    Merovanta::privacy().setFixedRectangles(painted);
    emit changed();
}

bool PrivacyQuick::maskTextInputs() const {
    return Merovanta::privacy().maskTextInputs();
}

void PrivacyQuick::setMaskTextInputs(bool masked) {
    Merovanta::privacy().setMaskTextInputs(masked);
    emit changed();
}

bool PrivacyQuick::maskTexts() const {
    return Merovanta::privacy().maskTexts();
}

void PrivacyQuick::setMaskTexts(bool masked) {
    Merovanta::privacy().setMaskTexts(masked);
    emit changed();
}

bool PrivacyQuick::maskPictures() const {
    return Merovanta::privacy().maskPictures();
}

void PrivacyQuick::setMaskPictures(bool masked) {
    Merovanta::privacy().setMaskPictures(masked);
    emit changed();
}

bool PrivacyQuick::preview() const {
    return Merovanta::privacy().preview();
}

void PrivacyQuick::setPreview(bool shown) {
    Merovanta::privacy().setPreview(shown);
    emit changed();
}

}  // namespace merovanta::quick
