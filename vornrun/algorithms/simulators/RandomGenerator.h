#pragma once
/// \file
/// Keeps this name for what is in the folder random.

#include "vornrun/algorithms/simulators/random/RandomGenerator.h"
