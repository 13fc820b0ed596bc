#include "shell/DesktopClipboard.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>

namespace quoril {

// The line holds the name of a folder, so it crosses as names of files do.

std::string DesktopClipboard::Text() const {
    const QMimeData* const Offered = QGuiApplication::clipboard()->mimeData();
    // A program that owns the clipboard and does not answer is waited for at every question, and a
    // text alone would be three.
    if (Offered == nullptr || Offered->formats().isEmpty())
        return {};
    return QFile::encodeName(Offered->text()).toStdString();
}

void DesktopClipboard::SetText(const std::string& Text) {
    QGuiApplication::clipboard()->setText(QFile::decodeName(Text.c_str()));
}

void DesktopClipboard::Clear() {
    QGuiApplication::clipboard()->clear();
}

} // namespace quoril
