#include "shell/DesktopClipboard.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>

namespace quoril {

// The line holds the name of a folder, so it crosses as names of files do.

std::string DesktopClipboard::Text() const {
    return QFile::encodeName(QGuiApplication::clipboard()->text()).toStdString();
}

void DesktopClipboard::SetText(const std::string& Text) {
    QGuiApplication::clipboard()->setText(QFile::decodeName(Text.c_str()));
}

void DesktopClipboard::Clear() {
    QGuiApplication::clipboard()->clear();
}

} // namespace quoril
