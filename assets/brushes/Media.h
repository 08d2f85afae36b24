#pragma once

#include "resources/BrushEntry.h"

// The shapes of the files, each in a square of `nSide` pixels. Angles in degrees, counted from the right upwards.

/// The edge of a broad pen, four times as long as thick.
kestrune::BrushEntry FlatNib(int nSide, double dAngle);

/// Grain that crumbles towards a ragged edge.
kestrune::BrushEntry Chalk(int nSide);
/// Coarse, slanting grain of a stick held flat.
kestrune::BrushEntry Charcoal(int nSide);
/// The blunt, nearly full end of a soft stick.
kestrune::BrushEntry Pastel(int nSide);
/// A round bundle of hairs: each draws its own line.
kestrune::BrushEntry Bristles(int nSide);
/// A flat brush with little paint left on it.
kestrune::BrushEntry DryBrush(int nSide);
/// Pores with clean paint between them.
kestrune::BrushEntry Sponge(int nSide);
/// Fine droplets, denser in the middle.
kestrune::BrushEntry Spray(int nSide);
/// Drops flung from a brush: a few large ones, tails, many small ones.
kestrune::BrushEntry Splatter(int nSide);
/// Soft billows.
kestrune::BrushEntry Cloud(int nSide);

kestrune::BrushEntry Leaf(int nSide, double dAngle);
kestrune::BrushEntry MapleLeaf(int nSide);
/// A twig with leaves on both sides.
kestrune::BrushEntry Sprig(int nSide);
kestrune::BrushEntry Petal(int nSide, double dAngle);
/// A flower of five notched petals.
kestrune::BrushEntry Blossom(int nSide);
/// A tuft of blades.
kestrune::BrushEntry Grass(int nSide);
/// A crystal of six arms.
kestrune::BrushEntry Snow(int nSide);
