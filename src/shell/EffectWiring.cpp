#include "effects/ChannelMix.h"
#include "effects/DeleteSilenceCommand.h"
#include "effects/EchoCommands.h"
#include "effects/EqualizerCommands.h"
#include "effects/GeneratorCommands.h"
#include "effects/NoiseCommands.h"
#include "effects/StretchCommands.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "shell/CommandWiring.h"

#include <array>
#include <string>

namespace quoril {

namespace {

/// Modes of both volume commands that stand in a menu under their own number.
constexpr std::array<std::int32_t, 8> EntryModes = {0, 11, 12, 13, 14, 15, 16, 17};
constexpr std::int32_t FullVolume = 21;
constexpr std::int32_t Silent = 21;

} // namespace

void WireEffectCommands(WaveEditor_Frm& Window) {
    CommandTable& Commands = Window.Commands;
    Commands.Set("Edit_VolFadeIn_Mnu", [] { AdjustVolume(5); });
    Commands.Set("Edit_VolFadeOut_Mnu", [] { AdjustVolume(4); });
    Commands.Set("Edit_VolMaximize_Mnu", [] { OptimizeVolume(3); });
    for (const std::int32_t Mode : EntryModes) {
        Commands.Set("Edit_AdjVol_Mnu_" + std::to_string(Mode), [Mode] { AdjustVolume(Mode); });
        Commands.Set("Edit_VolOpt_Mnu_" + std::to_string(Mode), [Mode] { OptimizeVolume(Mode); });
    }
    Commands.Set("Edit_VolOpt_Mnu_21", [] { OptimizeVolume(FullVolume); });
    for (const char* Entry : {"Edit_VolSilence_Mnu", "Silence_Mnu"})
        Commands.Set(Entry, [] { AdjustVolume(Silent); });
    Commands.Set("Wave_Reverse_Mnu", &WaveReverse);
    Commands.Set("Wave_Invert_Mnu", &WaveInvert);
    Commands.Set("Wave_MoveUpDn_Mnu", &WaveMoveUpDown);
    Commands.Set("Wave_MoveFoBk_Mnu", &WaveMoveForwardBack);
    Commands.Set("Interchange_Mnu", &InterchangeChannels);
    Commands.Set("ChannelMixMnu", &ChannelMix);
    for (const std::int32_t Index : {0, 1}) {
        Commands.Set("Equalize_Mnu_" + std::to_string(Index), [Index] { Equalize(Index); });
        Commands.Set("EffectNoisReduMnu_" + std::to_string(Index),
                     [Index] { EffectNoisRedu(Index); });
        Commands.Set("Stretch_Mnu_" + std::to_string(Index), [Index] { Stretch(Index); });
    }
    Commands.Set("Echo_Mnu", &Echo);
    Commands.Set("EqBandSplit_Mnu", &BandSplitter);
    Commands.Set("DeleteSilence_Mnu", &DeleteSilence);
    Commands.Set("DrawSine_Mnu", &DrawSine);
    Commands.Set("DrawNoise_Mnu", &DrawNoise);
    Commands.Set("Modulate_Mnu", &Modulate);
}

} // namespace quoril
