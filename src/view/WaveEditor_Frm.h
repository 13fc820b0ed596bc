// The main window: menus, toolbars, wave panels, value labels, status bar.
//
// The window says what there is and where it stands, shows numbers that others work out, and hands
// each event to the routine that is registered for it in `Commands`.
#pragma once

#include "selection/ViewListener.h"
#include "storage/UndoListener.h"
#include "view/CommandTable.h"
#include "view/EntDurFrm.h"
#include "view/SelConfFrm.h"
#include "view/TimeScale.h"
#include "view/WaveGeometry.h"
#include "view/WaveSource.h"

#include <QMainWindow>

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QAction;
class QBoxLayout;
class QGridLayout;
class QLabel;
class QMenu;
class QTimer;
class QToolButton;

namespace quoril {

class ArrowImage;
class BandDisplay;
class InfoStrip;
class PicturePanel;
class ReadOutLabel;
class StripMouse;
class ValueLabel;
class WavePanel;
class WavePanelMouse;

class WaveEditor_Frm final : public QMainWindow, public UndoListener, public ViewListener {
  public:
    explicit WaveEditor_Frm(QWidget* Parent = nullptr);
    ~WaveEditor_Frm() override;
    WaveEditor_Frm(const WaveEditor_Frm&) = delete;
    WaveEditor_Frm& operator=(const WaveEditor_Frm&) = delete;

    // ---- Commands, menus, toolbars

    /// The routines by the names of MenuTable and ToolbarTable.
    CommandTable Commands;
    /// Runs a command as its menu entry does: a failure that it lets through is shown in a box.
    void RunCommand(const std::string& Name);
    /// Enables what has a routine and is allowed; to be called after registering.
    void RefreshCommands();
    /// A menu entry or a button's own command ("PlayToolbar_Pause") may be used or not; starts as
    /// allowed. Without a routine it stays disabled all the same.
    void SetEntryEnabled(const std::string& Name, bool Enabled);
    void SetEntryChecked(const std::string& Name, bool Checked);
    [[nodiscard]] bool EntryChecked(const std::string& Name) const;
    /// The menu entry of that name. Throws std::out_of_range for a name that no table has.
    [[nodiscard]] QAction* Entry(const std::string& Name) const;
    /// The toolbar button "EditToolbar", "Undo". Throws std::out_of_range likewise.
    [[nodiscard]] QToolButton* ToolButton(const std::string& Toolbar, const std::string& Key) const;
    /// Fills the recent files menu; entry n runs "FileLastFilesMnu_n", from 1, and has its number
    /// in front as its access key.
    void SetRecentFiles(const std::vector<std::string>& Captions);
    /// The mode of a plain click on "Paste", 1 to 6; 0 while none was chosen, which runs mode 1.
    [[nodiscard]] int PasteMode() const { return PasteModeChosen; }

    // ---- The document's marks

    /// The title: file name and program.
    void SetDocumentTitle(const std::string& WaveFileName);
    /// The Format menu, the channel controls and the panel "Format" follow the current format.
    void SetMenu_To_DefaultFormat() override;
    void UndoMenuChanged(const UndoMenuState& State) override;
    /// The marks of DisplayToggleMnu follow `ShowHhmmss`.
    void RefreshDisplayToggle();

    // ---- Status bar

    /// The one-line help of the panel "UserGuide".
    void StatusGuide(const std::string& Message);

    // ---- Colours and drawing

    /// Panels and labels take the colours of the settings; the mouse tools go back to normal.
    void ApplyColorSettings();
    void Refresh_Wave_View() override;
    /// Redraws the overview bar.
    void RefreshScrollScale();
    /// Redraws the time scale.
    void RefreshPlayScale();
    void RefreshMousePointer() override;
    void RefreshDisplayLabels(bool Dragging) override;
    void RefreshChannelSelector() override;
    void ClearMouseFlags() override;

    // ---- Events for the shell

    /// Asked when the window is to close; false keeps it open. Without it the window just closes.
    std::function<bool()> UnloadWanted;
    /// Told after the window was moved, sized, minimised or restored.
    std::function<void()> PlaceChanged;
    /// A file was dropped on the window.
    std::function<void(const std::string& FileName)> FileDropped;

    // ---- Panels; an array's index 0 is unused where the elements count from 1

    QWidget* TopFrame = nullptr;
    std::array<WavePanel*, 3> Wave_Pic{};
    PicturePanel* ScalePic = nullptr;
    PicturePanel* HScrollPic = nullptr;
    std::array<ArrowImage*, 2> ArrowImg{};
    std::array<ValueLabel*, 3> SelectLbl{};
    std::array<ValueLabel*, 3> ViewLbl{};
    std::array<ReadOutLabel*, 3> DisplayPosLbl{};
    std::array<ReadOutLabel*, 3> DisplayPos2Lbl{};
    ReadOutLabel* PlayPosLbl = nullptr;
    QLabel* PlayStatusLbl = nullptr;
    PicturePanel* DispFrqVolPic = nullptr;
    BandDisplay* Bands = nullptr; ///< what DispFrqVolPic shows
    QLabel* SpeedDispPic = nullptr;
    std::array<QLabel*, 3> SpeedDispLbl{};

    /// From samples to the pixels of the panels, and the edges of the view on the overview bar (1
    /// left, 2 right, in its pixels; 0 is where a drag stands), from the last refresh.
    WaveScale PanelScale;
    std::array<std::int32_t, 3> ScrollEdge{};
    /// What is drawn; the document of the process unless a test gives another.
    void SetSource(const WaveSource* What);
    [[nodiscard]] DocumentFacts Facts() const { return Source->Facts(); }
    /// DispFrqVolPic shows the sound around a sample of a channel, 1 or 2.
    void ShowBands(std::int32_t Pos, std::int32_t Channel);

    /// Shows a point of a stroke on panel `Index`, in place of the one that its column has. Beside
    /// the document and the panel nothing is shown.
    void Draw_Point_Wave_Pic(int Index, std::int32_t Pos, std::int32_t Val);
    /// The same for one of several points: gives the pixels that have changed, which the caller
    /// then has updated.
    [[nodiscard]] QRect PlaceDrawnPoint(int Index, std::int32_t Pos, std::int32_t Val);

    /// What the mouse does over the wave panels.
    std::unique_ptr<WavePanelMouse> PanelMouse;
    /// And over the time scale and the overview bar.
    StripMouse* Strips = nullptr;

  protected:
    bool event(QEvent* Event) override;
    bool eventFilter(QObject* Watched, QEvent* Event) override;
    void showEvent(QShowEvent* Event) override;
    void resizeEvent(QResizeEvent* Event) override;
    void moveEvent(QMoveEvent* Event) override;
    void changeEvent(QEvent* Event) override;
    void keyPressEvent(QKeyEvent* Event) override;
    void closeEvent(QCloseEvent* Event) override;
    void dragEnterEvent(QDragEnterEvent* Event) override;
    void dropEvent(QDropEvent* Event) override;

  private:
    void BuildMenus();
    void BuildMenuRows(bool OfPopMnu);
    void BuildToolbars();
    QWidget* BuildToolbar(const std::string& Name, const std::string& Title);
    void BuildPasteButton(QToolButton* Button);
    void BuildPanels();
    void BuildInfoFrame();
    void BuildValueLabels(QGridLayout* Grid);
    void BuildMouseReadOut(QBoxLayout* Parts);
    void BuildPlayReadOut(QBoxLayout* Parts);
    void BuildSpeedReadOut(QGridLayout* Grid);
    void BuildBandDisplay(QGridLayout* Grid);
    void BuildStatusBar();
    void RegisterOwnCommands();
    void RegisterSelectCommands();
    void RegisterViewCommands();
    void RegisterDrawCommands();
    void DrawBegin();
    /// The entries and buttons of the tool Draw follow it once it has been put away.
    void DrawBtnEnbl();
    void ChoosePasteMode(int Mode);
    void AskValue(int Index);
    void ShowPopMnu(int Index, const QPoint& Where);
    void LayoutPanels(int Channels);
    void RefreshSafely();
    void DescribePanels();
    [[nodiscard]] ScaleView CurrentScaleView() const;

    SelConfAsker SelConf;
    EntDurAsker EntDur;
    StoreSource Store;
    const WaveSource* Source = &Store;

    std::map<std::string, QAction*> Entries;
    std::map<std::string, QMenu*> Menus;
    std::map<std::string, QToolButton*> Buttons; // by "Toolbar_Key"
    std::map<std::string, std::string> ButtonCommand;
    std::map<std::string, bool> Allowed;
    QMenu* PopMnu = nullptr;
    QWidget* Client = nullptr;
    InfoStrip* InfoFrame = nullptr;
    std::map<std::string, QLabel*> StatusPanels;
    QAction* LastFilesPlace = nullptr;
    std::vector<QAction*> LastFiles;
    QTimer* DrawBtnEnblTimer = nullptr;
    int PasteModeChosen = 0;
    int PopMnuLabel = 0;
};

} // namespace quoril
