// The dialog of the bands over a short stereo sound, and what a user does with its pictures.
#pragma once

#include "base/ViewState.h"
#include "shell/BandPanel.h"
#include "shell/EditorFixture.h"
#include "shell/EqlizFrm.h"
#include "shell/WithDialog.h"

#include <QLabel>
#include <QWindow>

#include <cmath>
#include <functional>
#include <vector>

namespace quoril::test {

class EqlizFixture : public EditorFixture {
  protected:
    using Samples = std::vector<std::int16_t>;

    EqlizFixture() {
        Start(WriteWav("a.wav", 1000, 2));
        SelStart = 1;
        SelEnd = 1000;
    }
    /// Runs a command of the menu, and `Do` on its dialog.
    void With(const char* Command, const std::function<void(QWidget*)>& Do) const {
        const WithDialog Act(Do);
        Menu(Command);
    }
    static BandPanel* Panel(const QWidget* Dialog, const char* Name) {
        return dynamic_cast<BandPanel*>(Part<QWidget>(Dialog, Name));
    }
    /// The middle of a band's column, at the row of a value.
    static QPoint At(const BandPanel& Where, std::int32_t NoOfBands, std::int32_t Band,
                     std::int32_t Value) {
        const BandPicture Place = Where.Geometry(NoOfBands);
        const double Ratio = Where.PixelRatio();
        return {static_cast<int>((Place.Left(Band) + Place.Left(Band + 1)) / 2 / Ratio),
                static_cast<int>(std::lround(Place.RowOf(Value) / Ratio))};
    }
    static void Click(BandPanel* Where, std::int32_t NoOfBands, std::int32_t Band,
                      std::int32_t Value = 0) {
        QTest::mouseClick(Where->window()->windowHandle(), Qt::LeftButton, {},
                          Where->mapTo(Where->window(), At(*Where, NoOfBands, Band, Value)));
    }
    static void MoveTo(BandPanel* Where, std::int32_t NoOfBands, std::int32_t Band,
                       std::int32_t Value) {
        QTest::mouseMove(Where->window()->windowHandle(),
                         Where->mapTo(Where->window(), At(*Where, NoOfBands, Band, Value)));
    }
    /// The colour in the middle of a band's column, at the row of a value.
    static QRgb PixelOf(BandPanel& Where, std::int32_t NoOfBands, std::int32_t Band,
                        std::int32_t Value) {
        const BandPicture Place = Where.Geometry(NoOfBands);
        return Where.Picture().pixel((Place.Left(Band) + Place.Left(Band + 1)) / 2,
                                     Place.RowOf(Value));
    }
    static QString Shown(const QWidget* Dialog, const char* Name) {
        return Part<QLabel>(Dialog, Name)->text();
    }

    static constexpr QRgb Red = 0xFFFF0000;
    static constexpr QRgb White = 0xFFFFFFFF;
    static constexpr QRgb Grey = 0xFFE0E0E0;
    static constexpr QRgb Line = 0xFFC0C0C0;
    static constexpr QRgb Black = 0xFF000000;
};

} // namespace quoril::test
