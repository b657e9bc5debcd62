#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "Platform/DocumentPreview.h"
#include "Platform/WebView.h"

namespace merovanta {

/// Follows what the chat page's scripts say, and shows the documents that arrive. Thread: main.
class ChatViewController : public std::enable_shared_from_this<ChatViewController> {
 public:
    static constexpr const char* openDocument = "openDocument";
    static constexpr const char* jsError = "jsError";

    ChatViewController();

    /// Follows a message to one of these handlers. A document that a script of the library's own hands over
    /// without a data URL ends the process; one of the page's is ignored.
    void didReceiveScriptMessage(const ScriptMessage& message);

    /// The file now shown; empty before the first.
    [[nodiscard]] const std::string& documentUrl() const { return mDocumentUrl; }

 private:
    void handleDocument(const std::string& body, ScriptMessage::Sender sender);
    void store(const std::string& name, std::string payload);
    [[nodiscard]] const char* refusalOf(const std::string& payload);
    [[nodiscard]] bool areTooMany();
    void show(const std::string& path);

    std::unique_ptr<DocumentPreview> documentPreviewController;
    std::string mDocumentUrl;
    std::size_t mWrittenBytes = 0;
    std::deque<std::chrono::milliseconds> mLastDocuments;
    int mInWork = 0;
    int mPageMessages = 0;
};

}  // namespace merovanta
