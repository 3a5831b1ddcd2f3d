#pragma once
/// \file
/// The modes of a component instance. They are values of the language, so their class is in the layer of the syntax.

#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"  // IWYU pragma: export
