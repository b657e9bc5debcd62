#pragma once

#include <Merovanta/Export.h>

#include <memory>

#include "Platform/DocumentPreview.h"
#include "Platform/WebView.h"

namespace merovanta::quick {

/// Gives the platform that initialize() made the chat, which is a library of its own.
MEROVANTA_INTERNAL void addChat(std::unique_ptr<WebViewFactory> webViews,
                                std::unique_ptr<DocumentPreviewFactory> documentPreviews);

}  // namespace merovanta::quick
