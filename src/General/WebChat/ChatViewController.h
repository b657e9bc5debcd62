#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Alert.h"
#include "Platform/DocumentPreview.h"
#include "Platform/WebView.h"

namespace merovanta {

/// Follows what the chat page's scripts say, and shows the documents that arrive. Thread: main.
class ChatViewController : public std::enable_shared_from_this<ChatViewController> {
 public:
    static constexpr const char* openDocument = "openDocument";
    static constexpr const char* jsError = "jsError";

    /// With the preview of an earlier one, which may be open.
    explicit ChatViewController(std::unique_ptr<DocumentPreview> preview);

    /// From now on no document is shown, not even one that has arrived: they are for a visitor who is no
    /// longer there. Gives the preview away.
    [[nodiscard]] std::unique_ptr<DocumentPreview> retire();

    /// Follows a message to one of these handlers. A document that a script of the library's own hands over
    /// without a data URL ends the process; one of the page's is ignored.
    void didReceiveScriptMessage(const ScriptMessage& message);

    /// The file now shown; empty before the first.
    [[nodiscard]] const std::string& documentUrl() const { return mDocumentUrl; }

 private:
    void handleDocument(const std::string& body, ScriptMessage::Sender sender);
    void store(const std::string& name, std::string payload);
    struct Refusal;
    [[nodiscard]] const Refusal* refusalOf(const std::string& payload);
    /// Tells the visitor, once the interface texts are there.
    void tell(const Refusal& refusal);
    void present(const Refusal& refusal);
    [[nodiscard]] bool areTooMany();
    void show(const std::string& path);

    std::unique_ptr<DocumentPreview> documentPreviewController;
    std::string mDocumentUrl;
    std::size_t mWrittenBytes = 0;
    std::deque<std::chrono::milliseconds> mLastDocuments;
    int mInWork = 0;
    int mPageMessages = 0;
    bool mIsRetired = false;
    std::unique_ptr<Alert> mNotice;
    bool mIsTelling = false;
    std::optional<std::chrono::milliseconds> mLastNotice;
};

}  // namespace merovanta
