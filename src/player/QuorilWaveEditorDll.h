// The component that the editor talks to: the player's operations on its private connection.
#pragma once

#include "player/PlayEngine.h"

#include <QByteArrayList>
#include <QList>
#include <QObject>

#include <functional>
#include <string>
#include <vector>

class QSocketNotifier;

namespace quoril {

/// Every slot is an operation of the interface, on the command thread. Texts are bytes: names of
/// files need not be text.
class QuorilWaveEditorDll final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.quoril.QuorilWaveEditorDll")

  public:
    explicit QuorilWaveEditorDll(OutputMaker Maker, QObject* Parent = nullptr);
    ~QuorilWaveEditorDll() override;
    QuorilWaveEditorDll(const QuorilWaveEditorDll&) = delete;
    QuorilWaveEditorDll& operator=(const QuorilWaveEditorDll&) = delete;

  public slots:
    int DriverState(int Window);
    int PlayPosition();
    void PlayForward();
    void PlayReverse();
    int PlayStatus();
    void UTurn();
    void Stop();
    void Continue();
    void Pause();
    void PauseStart();
    void Load(int Bits, int Channels, int Freq, int Length, const QList<int>& LeftList,
              const QList<int>& RightList);
    void MemoryBytes(int Bytes);
    void Loop(short On);
    void TempoForward(double Tempo);
    void TempoReverse(double Tempo);
    void TempDir(const QByteArray& Folder);
    void ReleaseFiles();
    void PlayForwardFrom(int Offset);
    void PlayReverseFrom(int Offset);
    void FilesEntered(const QByteArrayList& Names, const QList<qlonglong>& Identities);

  signals:
    void MsgBoxOb(const QByteArray& Prompt, const QByteArray& Title);

  private:
    void Guarded(const std::function<void()>& What);
    void Attend();
    void TellStatus();

    int NoticeHandle; ///< wakes this thread; written by the player's other threads
    PlayEngine Engine;
    std::vector<EnteredFile> Entered; ///< of the snapshot that is loaded next
    std::string WorkFolder;
    std::string StatusTold;
};

} // namespace quoril
