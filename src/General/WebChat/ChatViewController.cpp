#include "General/WebChat/ChatViewController.h"

#include <optional>
#include <utility>

#include "General/DebugPrint.h"
#include "General/Fatal.h"
#include "General/MainThread.h"
#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Injection.h"
#include "General/Panoptra/UIStrings.h"
#include "General/Panoptra/Util/Base64.h"
#include "General/Panoptra/Util/FileUtils.h"
#include "General/Panoptra/Util/ViewUtils.h"
#include "General/WebChat/DownloadScript.h"
#include "Platform/Platform.h"

namespace merovanta {

namespace {

// More is no document of a chat, and would fill the visitor's disk.
constexpr std::size_t maximumOfAll = std::size_t{256} * 1024 * 1024;
constexpr int maximumInWork = 4;
// More is not what a visitor asks for; each covers the application until it is closed.
constexpr std::size_t maximumInPeriod = 5;
constexpr std::chrono::seconds documentsPeriod{30};
constexpr int maximumPageMessages = 1000;
// A page must not be able to keep the visitor in one notice after the other: there is time to close the chat.
constexpr std::chrono::seconds noticePause{3};

/// The path of the written file; absent, with the reason on the debug output, if there is none.
std::optional<std::string> write(const std::string& name, std::string_view payload) {
    const auto bytes = decodeBase64(payload);
    if (!bytes) {
        debugPrint("Could not construct data from base64");
        return std::nullopt;
    }
    const auto fileName = FileUtils::fileNameOf(name);
    if (!fileName) {
        debugPrint("Could not write document: \"" + name + "\" is no file name");
        return std::nullopt;
    }
    const std::string directory = platform::current().fileManager().temporaryDirectory();
    const auto error = directory.empty() ? StringError("There is no temporary directory")
                                         : FileUtils::writePrivateFile(directory, *fileName, *bytes);
    if (error) {
        debugPrint("Could not write document: " + error->errorDescription());
        return std::nullopt;
    }
    return directory + "/" + *fileName;
}

}  // namespace

/// Why a document is not shown: for the debug output, and for the visitor in the service's words or these.
struct ChatViewController::Refusal {
    const char* reason;
    const char* key;
    const char* text;

    static const Refusal tooLarge;
    static const Refusal tooMuch;
    static const Refusal tooMany;
};

const ChatViewController::Refusal ChatViewController::Refusal::tooLarge{
    "it is too large", "ui.mobile.document.large", "The document is too large to be shown here."};
const ChatViewController::Refusal ChatViewController::Refusal::tooMuch{
    "this chat has sent too many", "ui.mobile.document.much",
    "This chat has sent as many documents as it can. Close it and open it again to see more."};
const ChatViewController::Refusal ChatViewController::Refusal::tooMany{
    "too many at once", "ui.mobile.document.many",
    "Too many documents came at once. Wait a moment, then open this one again."};

ChatViewController::ChatViewController(std::unique_ptr<DocumentPreview> preview)
    : documentPreviewController(std::move(preview)) {}

std::unique_ptr<DocumentPreview> ChatViewController::retire() {
    assertMainThread();
    mIsRetired = true;
    mNotice.reset();
    return std::move(documentPreviewController);
}

void ChatViewController::didReceiveScriptMessage(const ScriptMessage& message) {
    assertMainThread();
    // A page that floods must not fill the host's output.
    if (message.sender == ScriptMessage::Sender::page && mPageMessages++ >= maximumPageMessages) {
        mPageMessages = maximumPageMessages;
        return;
    }
    debugPrint("did receive message " + message.name);
    if (!message.body) return;
    if (message.name == openDocument) {
        handleDocument(*message.body, message.sender);
    } else if (message.name == jsError) {
        debugPrint(*message.body);
        const bool isTooLarge = message.body->starts_with(documentTooLargeError);
        if (isTooLarge && message.sender == ScriptMessage::Sender::evaluatedScript) tell(Refusal::tooLarge);
    }
}

void ChatViewController::handleDocument(const std::string& body, ScriptMessage::Sender sender) {
    const auto nameEnd = body.find(';');
    if (nameEnd == std::string::npos) return;
    const auto comma = body.find(',', nameEnd + 1);
    if (comma == std::string::npos) {
        if (sender == ScriptMessage::Sender::evaluatedScript)
            fatalError("A document came without a data URL");
        return;
    }
    store(body.substr(0, nameEnd), body.substr(comma + 1));
}

void ChatViewController::store(const std::string& name, std::string payload) {
    if (mIsRetired) return debugPrint("Could not write document: it is an earlier visitor's");
    if (const Refusal* const refusal = refusalOf(payload)) {
        debugPrint(std::string("Could not write document: ") + refusal->reason);
        return tell(*refusal);
    }
    ++mInWork;
    platform::current().workQueue().async([weak = weak_from_this(), name, payload = std::move(payload)] {
        const auto path = write(name, payload);
        ViewUtils::runOnMainQueue([weak, path, size = payload.size()] {
            const auto self = weak.lock();
            if (!self) return;
            --self->mInWork;
            if (!path) return;
            self->mWrittenBytes += size;
            self->show(*path);
        });
    });
}

bool ChatViewController::areTooMany() {
    const auto now = platform::current().clock().sinceEpoch();
    while (!mLastDocuments.empty() && now - mLastDocuments.front() > documentsPeriod)
        mLastDocuments.pop_front();
    if (mLastDocuments.size() >= maximumInPeriod) return true;
    mLastDocuments.push_back(now);
    return false;
}

const ChatViewController::Refusal* ChatViewController::refusalOf(const std::string& payload) {
    if (payload.size() > maximumDocumentBytes / 3 * 4) return &Refusal::tooLarge;
    if (mWrittenBytes > maximumOfAll) return &Refusal::tooMuch;
    if (mInWork >= maximumInWork || areTooMany()) return &Refusal::tooMany;
    return nullptr;
}

void ChatViewController::tell(const Refusal& refusal) {
    const auto now = platform::current().clock().sinceEpoch();
    const bool isTooSoon = mLastNotice && now - *mLastNotice < noticePause;
    const auto strings = Injection::resolve<UIStrings>();
    const auto config = Injection::resolve<ApplicationConfigWrapper>();
    if (mIsRetired || mIsTelling || isTooSoon || !strings || !config) return;
    mIsTelling = true;
    strings->load(config->config.tenantId.value_or(""),
                  [weak = weak_from_this(), &refusal](const std::optional<StringError>& /*error*/) {
                      if (const auto self = weak.lock()) self->present(refusal);
                  });
}

void ChatViewController::present(const Refusal& refusal) {
    mIsTelling = false;
    const auto controller = ViewUtils::topViewController();
    const auto strings = Injection::resolve<UIStrings>();
    if (mIsRetired || !controller || !strings) return;
    mIsTelling = true;
    mNotice = platform::current().alerts().present(
        *controller,
        {.title = strings->text("ui.mobile.document.title").value_or("The document is not shown"),
         .message = strings->text(refusal.key).value_or(refusal.text),
         .accept = strings->text("ui.mobile.dismiss").value_or("Dismiss")},
        [weak = weak_from_this()](bool /*accepted*/) {
            const auto self = weak.lock();
            if (!self) return;
            self->mIsTelling = false;
            self->mLastNotice = platform::current().clock().sinceEpoch();
            self->mNotice.reset();
        });
    mIsTelling = mNotice != nullptr;
}

/// Nothing once this is retired: the preview is another's.
void ChatViewController::show(const std::string& path) {
    const auto controller = ViewUtils::topViewController();
    if (!controller) return;
    mDocumentUrl = path;
    if (documentPreviewController) documentPreviewController->present(*controller, path);
}

}  // namespace merovanta
