#include "Platform/DocumentPreview.h"

#include <gmock/gmock.h>

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImageWriter>
#include <QtGui/QPageSize>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

#include "Qt/Foundation/FileManagerQt.h"
#include "Qt/Quick/TapPlayerQuick.h"
#include "Qt/QuickChat/DocumentPreviewFactoryQuick.h"
#include "Scene.h"

using merovanta::quick::DocumentPreviewFactoryQuick;
using merovanta::test::eventually;
using merovanta::test::Scene;

namespace {

QByteArray pdf(int pages) {
    QBuffer buffer;
    buffer.open(QBuffer::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0) writer.newPage();
        painter.fillRect(painter.viewport().adjusted(0, 0, 0, -painter.viewport().height() / 2),
                         page == 0 ? QColor("#ff0080") : QColor("#0080ff"));
        painter.setPen(Qt::black);
        painter.setFont(QFont("Inter", 30));
        painter.drawText(1000, painter.viewport().height() * 3 / 4, "Contract");
    }
    painter.end();
    return buffer.data();
}

/// A page of 200 by 400, cut out of a larger one and turned by a quarter, red on its left and empty
/// elsewhere.
QByteArray turnedPdf() {
    return R"(%PDF-1.4
1 0 obj <</Type /Catalog /Pages 2 0 R>>
endobj
2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1>>
endobj
3 0 obj <</Type /Page /Parent 2 0 R /Rotate 90 /MediaBox [0 0 900 900] /CropBox [0 0 200 400] /Contents 4 0 R>>
endobj
4 0 obj <</Length 27>> stream
1 0 0 rg 0 0 200 300 re f  
endstream
endobj
trailer <</Root 1 0 R>>
)";
}

/// A form that draws a form ten times, and so on: more than can ever be drawn.
QByteArray endlessPdf() {
    constexpr int depth = 14;
    QByteArray bytes =
        "%PDF-1.4\n1 0 obj <</Type /Catalog /Pages 2 0 R>>\nendobj\n"
        "2 0 obj <</Type /Pages /Kids [3 0 R] /Count 1>>\nendobj\n"
        "3 0 obj <</Type /Page /Parent 2 0 R /MediaBox [0 0 200 280] /Contents 4 0 R "
        "/Resources <</XObject <</X 5 0 R>>>>>>\nendobj\n"
        "4 0 obj <</Length 5>> stream\n/X Do\nendstream\nendobj\n";
    const QByteArray ten = QByteArray("/X Do ").repeated(10);
    for (int number = 5; number < 5 + depth; ++number) {
        bytes += QByteArray::number(number) + " 0 obj <</Type /XObject /Subtype /Form /BBox [0 0 200 280] " +
                 "/Resources <</XObject <</X " + QByteArray::number(number + 1) +
                 " 0 R>>>> /Length 60>> stream\n" + ten + "\nendstream\nendobj\n";
    }
    return bytes + QByteArray::number(5 + depth) +
           " 0 obj <</Type /XObject /Subtype /Form /BBox [0 0 200 280] " +
           "/Length 14>> stream\n0 0 1 1 re f  \nendstream\nendobj\ntrailer <</Root 1 0 R>>\n";
}

QByteArray picture(QSize size, const char* format) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor("#ff0080"));
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
}

/// The file says that it has a side of 30000 pixels and has none.
QByteArray hugePicture() {
    QByteArray bytes = picture({10, 10}, "bmp");
    for (const int place : {18, 22})
        bytes.replace(place, 4, QByteArray("\x30\x75\0\0", 4));
    return bytes;
}

/// The last of its passes over all pixels comes again and again.
QByteArray endlessPicture() {
    QImage image(4000, 4000, QImage::Format_RGB32);
    image.fill(QColor("#ff0080"));
    QBuffer buffer;
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    writer.write(image);
    QByteArray bytes = buffer.data();
    const QByteArray pass = bytes.sliced(bytes.lastIndexOf("\xff\xda")).chopped(2);
    return bytes.chopped(2) + pass.repeated(20000) + bytes.last(2);
}

QQuickItem* find(QQuickItem& item, const char* name) {
    if (item.objectName() == name) return &item;
    const auto children = item.childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* const found = find(*child, name)) return found;
    }
    return nullptr;
}

struct Desk {
    void present(const QString& name, const QByteArray& content) {
        QFile file(directory.filePath(name));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
        file.close();
        opened.clear();
        preview->present(*scene.controller(), file.fileName().toStdString());
    }
    QObject* dialog() { return scene.window().findChild<QObject*>("documentPreview"); }
    QQuickItem* item(const char* name) {
        QQuickItem* const content =
            dialog() ? dialog()->property("contentItem").value<QQuickItem*>() : nullptr;
        return content == nullptr ? nullptr : find(*content, name);
    }
    /// Whether an item of this name shows, of whose text that is the beginning.
    bool shows(const char* name, const QString& text = {}) {
        return eventually([&] {
            auto* const found = item(name);
            return found != nullptr && found->isVisible() &&
                   found->property("text").toString().startsWith(text);
        });
    }
    bool showsColour(const char* colour, int y = 133) {
        return eventually([&] { return scene.window().grabWindow().pixelColor(150, y) == QColor(colour); });
    }
    void key(Qt::Key key) { QTest::keyClick(&scene.window(), key); }

    QTemporaryDir directory;
    Scene scene{"ApplicationWindow { color: '#00ff00' }"};
    std::vector<QString> opened;
    bool opens = true;
    DocumentPreviewFactoryQuick factory{[this](const QUrl& file) {
        opened.push_back(file.fileName());
        return opens;
    }};
    std::unique_ptr<merovanta::DocumentPreview> preview = factory.create();
};

TEST(DocumentPreview, ShowsPagesPicturesAndText) {
    Desk desk;
    desk.present("<b>a.pdf", pdf(2));
    EXPECT_TRUE(desk.showsColour("#ff0080"));
    EXPECT_TRUE(desk.shows("documentTitle", "<b>a.pdf"));
    EXPECT_EQ(desk.scene.controller()->presentedViewController()->className(), "DocumentPreview");
    desk.key(Qt::Key_End);
    desk.key(Qt::Key_Up);
    EXPECT_TRUE(desk.showsColour("#0080ff", 150)) << "the second page";
    desk.present("turned.pdf", turnedPdf());
    EXPECT_TRUE(eventually([&] { return desk.item("page") && desk.item("page")->height() < 150; }));
    EXPECT_TRUE(desk.showsColour("#ff0000"));
    desk.present("b.jpg", picture({2000, 1000}, "png"));
    EXPECT_TRUE(eventually([&] { return desk.item("page") && desk.item("page")->height() < 150; }));
    desk.present("page.html", "<h1>Text</h1>\r\n<script>alert()</script>");
    EXPECT_TRUE(desk.shows("line", "<h1>Text</h1>"));
    desk.present("drawing.svg", "<svg xmlns='http://www.w3.org/2000/svg'/>");
    EXPECT_TRUE(desk.shows("line", "<svg"));
    desk.key(Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return desk.dialog() == nullptr; }));
    EXPECT_TRUE(desk.opened.empty());
}

TEST(DocumentPreview, RunsNothingAndSurvivesEverything) {
    Desk desk;
    const QByteArray elf = QByteArray(
                               "\x7f"
                               "ELF\x02\x01\x01",
                               7) +
                           QByteArray(9, '\0') + QByteArray("\x02\0\x3e\0", 4);
    const struct {
        const char* name;
        QByteArray content;
        const char* shown;
        const char* text = "";
    } files[] = {
        {"a", elf, "noPreview"},
        {"a.odt", elf, "noPreview"},
        {"a.pdf", elf, "noPreview"},
        {"a.exe", "MZ\x90", "noPreview"},
        {"a.jar", "PK\x03\x04", "noPreview"},
        {"a.msi", "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1", "noPreview"},
        {"a.sh", "#!/bin/sh\nrm\n", "line", "#!/bin/sh"},
        {"a.desktop", "[Desktop Entry]\nExec=rm\n", "line", "[Desktop"},
        {"a.docx", "#!/bin/sh\nrm\n", "line", "#!/bin/sh"},
        {"cut.pdf", pdf(1).left(900), "noPreview"},
        {"cut.png", picture({300, 300}, "png").left(20), "noPreview"},
        {"huge.bmp", hugePicture(), "noPreview"},
        {"none.txt", "", "noPreview"},
        {"long.txt", "x" + QByteArray(3 << 20, '\n'), "line", "x"},
        {"wide.txt", QByteArray("\xff\xfe\x3d\xd8") + QByteArray(5 << 20, 'x'), "line"},
    };
    for (const auto& file : files) {
        SCOPED_TRACE(file.name);
        desk.present(file.name, file.content);
        EXPECT_TRUE(desk.shows(file.shown, file.text));
        EXPECT_TRUE(desk.opened.empty());
    }
    for (const auto& [name, content] : {std::pair("a.pdf", endlessPdf()), {"a.jpg", endlessPicture()}}) {
        SCOPED_TRACE(name);
        desk.present(name, content);
        EXPECT_TRUE(eventually([&] { return desk.item("page") != nullptr; }));
        QTest::qWait(200);
        desk.present("next.txt", "Next");
        EXPECT_TRUE(desk.shows("line", "Next")) << "what takes too long keeps nothing waiting";
    }
    desk.present("a.pdf", pdf(1));
    desk.scene.close();
    QTest::qWait(100);
    desk.preview.reset();
}

TEST(DocumentPreview, HandsToAnotherProgramOnlyWhatTheVisitorOpens) {
    Desk desk;
    const QByteArray zip = "PK\x03\x04";
    desk.present("letter.docx", zip);
    ASSERT_TRUE(desk.shows("openDocument"));
    const auto middle = [&] {
        const QQuickItem& button = *desk.item("openDocument");
        return button.mapToScene({button.width() / 2, button.height() / 2});
    };
    const auto press = [&] {
        QTest::mouseClick(&desk.scene.window(), Qt::LeftButton, {}, middle().toPoint());
        QTest::qWait(50);
    };
    desk.key(Qt::Key_Return);
    press();
    EXPECT_TRUE(desk.opened.empty()) << "a press that came with the preview was meant for something else";
    QTest::qWait(600);
    merovanta::quick::TapPlayerQuick agent;
    EXPECT_FALSE(agent.tap(*desk.scene.root(), {middle().x(), middle().y()}));
    EXPECT_TRUE(desk.opened.empty());
    press();
    ASSERT_EQ(desk.opened.size(), 1);
    EXPECT_EQ(desk.opened.front(), "letter.docx");
    EXPECT_EQ(desk.dialog(), nullptr);

    desk.opens = false;
    desk.present("a.zip", zip);
    ASSERT_TRUE(desk.shows("openDocument"));
    QTest::qWait(600);
    desk.key(Qt::Key_Tab);
    if (!desk.item("openDocument")->hasActiveFocus()) desk.key(Qt::Key_Tab);
    desk.key(Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return desk.opened.size() == 1; })) << "by the keyboard, too";
    EXPECT_TRUE(desk.shows("noPreview", "There is no preview of this file."));
    EXPECT_FALSE(desk.item("openDocument")->isVisible());

    // The next document takes the place of the one that is being opened.
    desk.present("b.zip", zip);
    ASSERT_TRUE(desk.shows("openDocument"));
    QTest::qWait(600);
    // Without a turn of the event loop in between.
    QMetaObject::invokeMethod(desk.item("openDocument"), "clicked");
    desk.present("c.zip", zip);
    ASSERT_TRUE(desk.shows("openDocument"));
    EXPECT_TRUE(desk.opened.empty());
}

TEST(FileManager, KeepsOneDirectoryToItself) {
    merovanta::qt::FileManagerQt files;
    const auto path = QString::fromStdString(files.temporaryDirectory());
    EXPECT_EQ(QFileInfo(path).permissions() & 0x77, 0);
    EXPECT_EQ(files.temporaryDirectory(), path.toStdString());
    QDir(path).removeRecursively();
    ASSERT_TRUE(QFile::link("/tmp", path));
    const auto other = QString::fromStdString(files.temporaryDirectory());
    EXPECT_NE(other, path);
    QFile::remove(path);
    ASSERT_TRUE(QDir(other).exists());
    EXPECT_TRUE(QDir(other).removeRecursively());
}

}  // namespace
