// Acts on the next modal window as a user would, while the code under test waits for it.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>

namespace quoril::test {

/// A control of a window by its name.
template <class Kind>
Kind* Part(const QWidget* Window, const char* Name) {
    auto* Found = Window->findChild<Kind*>(QLatin1String(Name));
    EXPECT_NE(Found, nullptr) << Name;
    return Found;
}
/// Clicks a button of a window.
inline void Press(const QWidget* Window, const char* Name) {
    QTest::mouseClick(Part<QPushButton>(Window, Name), Qt::LeftButton);
}
/// Presses a button of a window by keys.
inline void PressByKey(const QWidget* Window, const char* Name) {
    Part<QPushButton>(Window, Name)->setFocus();
    QTest::keyClick(Part<QPushButton>(Window, Name), Qt::Key_Return);
}

/// Runs `Do` on the next modal window that comes up. A window that is still open afterwards is
/// closed, so that a broken test ends.
class WithDialog {
  public:
    explicit WithDialog(std::function<void(QWidget*)> Do) {
        Limit.start();
        QObject::connect(&Timer, &QTimer::timeout, &Timer, [this, Do = std::move(Do)] {
            QWidget* Modal = QApplication::activeModalWidget();
            if (Modal == nullptr || !Modal->isVisible()) {
                if (Limit.elapsed() > 10000) {
                    Timer.stop();
                    ADD_FAILURE() << "no modal window came up";
                }
                return;
            }
            Timer.stop();
            Seen = true;
            Do(Modal);
            CloseLater(Modal);
        });
        Timer.start(1);
    }
    ~WithDialog() { EXPECT_TRUE(Seen) << "the expected window never came up"; }
    WithDialog(const WithDialog&) = delete;
    WithDialog& operator=(const WithDialog&) = delete;

  private:
    /// A window that is still open after a while is told and closed, with what stands over it.
    static void CloseLater(QWidget* Window) {
        QTimer::singleShot(2000, Window, [Window] {
            if (!Window->isVisible())
                return;
            QWidget* Top = QApplication::activeModalWidget();
            const auto* Box = qobject_cast<QMessageBox*>(Top);
            ADD_FAILURE() << "the window did not close: " << qPrintable(Window->objectName())
                          << (Box != nullptr ? ", under a box: " + Box->text().toStdString() : "");
            CloseLater(Window);
            if (Top != nullptr)
                Top->close();
        });
    }

    QTimer Timer;
    QElapsedTimer Limit;
    bool Seen = false;
};

} // namespace quoril::test
