// What a desktop's clipboard manager does: takes over the text of the clipboard, so that it stays
// when the program that put it there is gone. Says "kept" and runs until it is ended.
#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>

#include <iostream>

int main(int Count, char** Words) {
    QGuiApplication Application(Count, Words);
    QTimer::singleShot(0, [] {
        QClipboard* const Clipboard = QGuiApplication::clipboard();
        const QString Text = Clipboard->text();
        Clipboard->setText(Text);
        std::cout << "kept " << Text.toStdString() << std::endl;
    });
    return QGuiApplication::exec();
}
