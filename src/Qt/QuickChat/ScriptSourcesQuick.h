#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>
#include <string>
#include <vector>

namespace merovanta::quick {

/// The scripts that run in each page of a web view and do nothing in pages other than this one.
struct ScriptSourcesQuick {
    /// For the page's own world.
    QString page;
    /// For the world beside it, which has the web channel.
    QString own;

    [[nodiscard]] static ScriptSourcesQuick make(const QUrl& page, const std::vector<std::string>& handlers);
};

/// The script in a form that is evaluated to the empty text, or to the error that ended it; to no text if it
/// is none. Does not run it where the handlers are not.
[[nodiscard]] QString evaluable(const std::string& script);

}  // namespace merovanta::quick
