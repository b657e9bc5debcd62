#include <Merovanta/MerovantaPrivacy.h>

#include "General/Panoptra/Privacy/PrivacyPreview.h"
#include "General/Panoptra/Privacy/PrivacySettings.h"
#include "Platform/Platform.h"

namespace merovanta {

MerovantaPrivacy::MerovantaPrivacy() : mSettings(new PrivacySettings()) {}

void MerovantaPrivacy::setFixedRectangles(bool painted) {
    mSettings->paintsFixedRectangles = painted;
}

bool MerovantaPrivacy::fixedRectangles() const {
    return mSettings->paintsFixedRectangles;
}

void MerovantaPrivacy::setMaskTextInputs(bool masked) {
    mSettings->masksTextInputs = masked;
}

bool MerovantaPrivacy::maskTextInputs() const {
    return mSettings->masksTextInputs;
}

void MerovantaPrivacy::setMaskTexts(bool masked) {
    mSettings->masksTexts = masked;
}

bool MerovantaPrivacy::maskTexts() const {
    return mSettings->masksTexts;
}

void MerovantaPrivacy::setMaskPictures(bool masked) {
    mSettings->masksPictures = masked;
}

bool MerovantaPrivacy::maskPictures() const {
    return mSettings->masksPictures;
}

void MerovantaPrivacy::setPreview(bool shown) {
    if (!platform::isInstalled() || mSettings->showsPreview == shown) return;
    mSettings->showsPreview = shown;
    platform::current().screenCapture().setPreview(shown ? PrivacyPreview::source() : MaskPreviewSource());
}

bool MerovantaPrivacy::preview() const {
    return mSettings->showsPreview;
}

}  // namespace merovanta
