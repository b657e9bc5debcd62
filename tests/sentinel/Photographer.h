#pragma once

#include <QtCore/QString>
#include <memory>
#include <optional>
#include <string>

#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "SpyPlatform.h"
#include "support/Recipient.h"

namespace merovanta::test {

/// Whether a pixel is magenta, or what edges and half transparent views make of it.
[[nodiscard]] bool isSentinel(std::uint32_t word);

/// What one picture shows.
struct Exposure {
    /// Sentinel pixels before and after the masks were painted, and in the JPEG that goes out.
    std::size_t painted = 0;
    std::size_t leaked = 0;
    bool leakedAsJpeg = false;
    /// Pixels of what need not be hidden, after the masks.
    std::size_t open = 0;
};

/// Takes pictures of the key window with the library's own monitor, one whenever asked, and looks at each as
/// it stands after the masking and once more as the service gets it.
class Photographer {
 public:
    /// Of a session whose service names this.
    Photographer(SpyPlatform& platform, const IOSConfig& lists);
    ~Photographer();

    /// Nothing if the picture was dropped.
    [[nodiscard]] std::optional<Exposure> take();

    /// The last picture, masked: 0xffRRGGBB.
    [[nodiscard]] const PixelBuffer& picture() const { return mPicture; }

 private:
    void look(const std::optional<CapturedFrame>& frame);

    SpyPlatform& mPlatform;
    std::shared_ptr<ApplicationConfigWrapper> mConfig = std::make_shared<ApplicationConfigWrapper>();
    std::shared_ptr<ViewMonitor> mMonitor = std::make_shared<ViewMonitor>(mConfig);
    std::shared_ptr<Recipient> mRecipient;
    bool mIsSeen = false;
    std::optional<Exposure> mExposure;
    PixelBuffer mPicture;
};

}  // namespace merovanta::test
