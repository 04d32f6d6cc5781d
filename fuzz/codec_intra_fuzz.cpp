// Any bytes as a stream for the intra decoder: the first byte chooses the standard. Sizes beyond 256 are
// passed over, since the time they take is spent on memory and finds nothing.
#include <cstddef>
#include <cstdint>

#include "codec/intra_decoder.h"
#include "codec/picture_headers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  if (byteCount == 0) {
    return 0;
  }
  const bool isMpeg2 = (data[0] & 1) != 0;
  const quorvelant::ByteView stream = quorvelant::ByteView(data, byteCount).subspan(1);
  quorvelant::PictureHeaders headers;
  headers.Mpeg2 = isMpeg2;
  quorvelant::UnitReader units(stream);
  for (quorvelant::StreamUnit unit{}; units.Next(unit);) {
    headers.Take(unit);
    if (headers.Width > 256 || headers.Height > 256) {
      return 0;
    }
  }
  quorvelant::DecodeIFrame(stream, isMpeg2);
  return 0;
}
