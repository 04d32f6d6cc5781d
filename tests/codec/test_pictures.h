// Pictures made for the tests, and how far two pictures lie apart.
#pragma once

#include "codec/planes.h"
#include "picture/picture.h"

namespace quorvelant {

// Soft shades, sharp edges, fine texture and the grain of a camera, another picture for each `seed`.
Picture PhotographLike(int width, int height, unsigned seed);
// Every channel of every pixel at random.
Picture Noise(int width, int height, unsigned seed);

// Peak signal to noise ratio in dB over the samples of all planes.
double Psnr(const Planes& a, const Planes& b);
// The largest difference of two samples; 256 where the sizes differ.
int LargestDifference(const Planes& a, const Planes& b);

}  // namespace quorvelant
