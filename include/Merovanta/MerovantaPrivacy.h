#pragma once

#include <Merovanta/Export.h>

namespace merovanta {

struct PrivacySettings;

/// What is covered in the pictures that the agent sees, for the whole application. The one instance is
/// Merovanta::privacy(); what is set on it holds until the process ends.
///
/// Always covered, whatever is set here: the views that the service's lists name, with all that is in them;
/// what the host has marked as private on the view itself (in Qt Quick: `Merovanta.masked`); and text inputs
/// that hide what is typed.
///
/// Nothing is thrown and nothing fails; no platform is needed but for the preview. Thread: main.
class MEROVANTA_EXPORT MerovantaPrivacy {
 public:
    MerovantaPrivacy(const MerovantaPrivacy&) = delete;
    MerovantaPrivacy& operator=(const MerovantaPrivacy&) = delete;

    /// Whether, beside the area that each listed view takes up, the rectangle is blacked out that the
    /// service's own rule gives for it: the view's frame taken as if it were in the view's own coordinates,
    /// with only its origin divided by the screen's scale. It often lies beside the view. True unless the
    /// host says otherwise; a session takes over what holds when it starts.
    void setFixedRectangles(bool painted);
    /// As set.
    [[nodiscard]] bool fixedRectangles() const;

    /// Whether all text inputs are covered. Web pages count as text inputs, texts and pictures. A view that
    /// the host has marked as not private is an exception, with all that is in it. False unless the host says
    /// otherwise; holds from the next picture on.
    void setMaskTextInputs(bool masked);
    /// As set.
    [[nodiscard]] bool maskTextInputs() const;
    /// The same for all texts, those in inputs among them.
    void setMaskTexts(bool masked);
    /// As set.
    [[nodiscard]] bool maskTexts() const;
    /// The same for all pictures.
    void setMaskPictures(bool masked);
    /// As set.
    [[nodiscard]] bool maskPictures() const;

    /// For developers: whether the application's windows show outlines around what would be covered in a
    /// picture of them, with the reason: an entry of the lists, a mark, a setting of these. No session need
    /// run, but without one there are no lists. The outlines are in no picture and take no input. Without a
    /// platform this does nothing. False unless the host says otherwise; in Qt Quick also true from the start
    /// with MEROVANTA_PRIVACY_PREVIEW=1 in the environment.
    void setPreview(bool shown);
    /// As set.
    [[nodiscard]] bool preview() const;

 private:
    friend class Merovanta;
    friend class PrivacyPreview;
    friend class ViewMonitor;
    MerovantaPrivacy();

    [[nodiscard]] const PrivacySettings& settings() const { return *mSettings; }

    /// Never destroyed, like this.
    PrivacySettings* mSettings;
};

}  // namespace merovanta
