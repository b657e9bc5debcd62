#pragma once

#include <Merovanta/Export.h>

#include <QtCore/QString>

namespace merovanta::qt {

/// What can be done with a document that came from outside.
enum class DocumentType {
    pdf,
    picture,
    /// To be shown as plain text, whatever it may be besides: a web page, a drawing in text form, a script.
    text,
    /// An office document, a recording, an archive: for another application, and none that would run it.
    external,
    unshowable,
};

/// By the file's name and its beginning. Any thread.
[[nodiscard]] MEROVANTA_INTERNAL DocumentType documentTypeOf(const QString& path);

}  // namespace merovanta::qt
