#include "General/WebChat/ChatViewController.h"

#include <optional>
#include <utility>

#include "General/DebugPrint.h"
#include "General/Fatal.h"
#include "General/MainThread.h"
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

ChatViewController::ChatViewController()
    : documentPreviewController(platform::current().documentPreviews().create()) {}

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
    if (const char* const refusal = refusalOf(payload)) {
        debugPrint(std::string("Could not write document: ") + refusal);
        return;
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

const char* ChatViewController::refusalOf(const std::string& payload) {
    if (payload.size() > maximumDocumentBytes / 3 * 4) return "it is too large";
    if (mWrittenBytes > maximumOfAll) return "this chat has sent too many";
    if (mInWork >= maximumInWork || areTooMany()) return "too many at once";
    return nullptr;
}

void ChatViewController::show(const std::string& path) {
    const auto controller = ViewUtils::topViewController();
    if (!controller) return;
    mDocumentUrl = path;
    if (documentPreviewController) documentPreviewController->present(*controller, path);
}

}  // namespace merovanta
