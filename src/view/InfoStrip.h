// The strip of read-outs at the lower edge of the main window.
#pragma once

#include <QWidget>

#include <vector>

class QBoxLayout;
class QGridLayout;
class QHBoxLayout;

namespace quoril {

class FlowRow;

/// Groups of three lines side by side. Where the window is too narrow for that, the groups that can
/// be laid flat become one line each, and go below the others.
class InfoStrip final : public QWidget {
  public:
    explicit InfoStrip(QWidget* Parent);

    /// A group that is three lines high at any width: the rows 0 to 2 of a grid. Groups are added
    /// from left to right; room that is left over goes to them by their shares.
    QGridLayout* AddGroup(int Share = 0);
    /// A group of three parts, one a line, which can be laid flat.
    QBoxLayout* AddFlatGroup();
    /// The height of a line with a value, which the lines of all groups share.
    [[nodiscard]] int ValueHeight() const;
    /// The side of a picture in the first line, and the least height of that line.
    static constexpr int HeadIcon = 16;

    /// Chooses the form for this width, and gives the height that it takes.
    int FitTo(int Width);
    /// The narrowest width at which nothing is cut off.
    [[nodiscard]] int LeastWidth() const;

  private:
    void Arrange(bool Flat);

    struct Group {
        QWidget* Widget;
        QBoxLayout* Parts; // null where the group cannot be laid flat
        int Share;
    };

    std::vector<Group> Groups;
    QHBoxLayout* Top;
    QWidget* Below;
    FlowRow* BelowRow;
    bool IsFlat = false;
    int WidthInOneRow = 0;
};

} // namespace quoril
