#include "menu/backdrop.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace quorvelant {

namespace {

constexpr std::size_t Channels = 3;
using Light = std::array<float, Channels>;

Light LightOf(Color color) {
  return {static_cast<float>(color & 255U), static_cast<float>(color >> 8U & 255U),
          static_cast<float>(color >> 16U & 255U)};
}

// From 0 to 1 with no edge at either end.
float Eased(float share) {
  const float held = std::clamp(share, 0.0F, 1.0F);
  return held * held * (3 - 2 * held);
}

// Below 1, scattered evenly over neighbouring pixels (interleaved gradient noise).
float NoiseAt(int x, int y) {
  const float slope = 0.06711056F * static_cast<float>(x) + 0.00583715F * static_cast<float>(y);
  const float scattered = 52.9829189F * (slope - std::floor(slope));
  return scattered - std::floor(scattered);
}

}  // namespace

Picture PaintBackdrop(const Backdrop& backdrop, int width, int height) {
  const Light top = LightOf(backdrop.Top);
  const Light bottom = LightOf(backdrop.Bottom);
  const Light glow = LightOf(backdrop.Glow);
  const auto wide = static_cast<float>(width);
  const auto high = static_cast<float>(height);
  const auto radius = static_cast<float>(backdrop.GlowRadius);
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    const float down = static_cast<float>(y) / high;
    const float fall = Eased(down);
    const float glowDown = (down - static_cast<float>(backdrop.GlowY)) * 0.75F;  // of a page of 4:3
    std::uint8_t* pixel = picture.Row(y);
    for (int x = 0; x < width; ++x) {
      const float across = static_cast<float>(x) / wide - static_cast<float>(backdrop.GlowX);
      const float lit = Eased(1 - std::sqrt(across * across + glowDown * glowDown) / radius);
      const float noise = NoiseAt(x, y);
      for (std::size_t i = 0; i < Channels; ++i) {
        const float ground = top[i] + (bottom[i] - top[i]) * fall;
        const float light = ground + (glow[i] - ground) * lit;
        *pixel++ = static_cast<std::uint8_t>(std::clamp(light + noise, 0.0F, 255.0F));
      }
    }
  }
  return picture;
}

}  // namespace quorvelant
