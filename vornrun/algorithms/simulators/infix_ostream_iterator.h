#pragma once
/// \file
/// Keeps this name for what is in the folder steps.

#include "vornrun/algorithms/simulators/steps/infix_ostream_iterator.h"
