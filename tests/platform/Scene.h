#pragma once

class CDC;

namespace vesk {

// Draws some of everything, at random places in and around 120 x 90 pixels; the same for a seed.
void DrawScene(CDC&, unsigned seed);

}  // namespace vesk
