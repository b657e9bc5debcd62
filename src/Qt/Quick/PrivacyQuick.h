#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>

namespace merovanta::quick {

/// Merovanta::privacy() for QML.
class PrivacyQuick final : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool fixedRectangles READ fixedRectangles WRITE setFixedRectangles NOTIFY changed FINAL)
    Q_PROPERTY(bool maskTextInputs READ maskTextInputs WRITE setMaskTextInputs NOTIFY changed FINAL)
    Q_PROPERTY(bool maskTexts READ maskTexts WRITE setMaskTexts NOTIFY changed FINAL)
    Q_PROPERTY(bool maskPictures READ maskPictures WRITE setMaskPictures NOTIFY changed FINAL)
    Q_PROPERTY(bool preview READ preview WRITE setPreview NOTIFY changed FINAL)

 public:
    /// The one that all objects share: bindings hear of every change made here. It is never destroyed.
    [[nodiscard]] static PrivacyQuick& instance();

    [[nodiscard]] bool fixedRectangles() const;
    void setFixedRectangles(bool painted);
    [[nodiscard]] bool maskTextInputs() const;
    void setMaskTextInputs(bool masked);
    [[nodiscard]] bool maskTexts() const;
    void setMaskTexts(bool masked);
    [[nodiscard]] bool maskPictures() const;
    void setMaskPictures(bool masked);
    [[nodiscard]] bool preview() const;
    void setPreview(bool shown);

 Q_SIGNALS:
    void changed();

 private:
    PrivacyQuick() = default;
};

}  // namespace merovanta::quick
