#include "desk/edit_options.h"

namespace quorvelant {

EditOptions EditOptionsOf(const Settings& settings) {
  return {.Import = {.UseTrackNames = settings.UseTrackNames,
                     .AutoCreateChapters = settings.AutoCreateChapters,
                     .PalChapters = settings.PalChapters,
                     .NtscChapters = settings.NtscChapters},
          .PalSlide = settings.PalSlideDuration,
          .NtscSlide = settings.NtscSlideDuration,
          .SlideChapters = settings.AutoSlideChapters,
          .ExtendFinalSlide = settings.ExtendFinalSlide,
          .ExtendFinalSubtitle = settings.ExtendFinalSubtitle,
          .ScenesNotSeamless = settings.ScenesNotSeamless,
          .SeamlessPgc = settings.SeamlessPGC,
          .SubRip = settings.Subrip,
          .DestinationFolder = settings.DestinationFolder};
}

}  // namespace quorvelant
