#pragma once
/// \file
/// How values are identified. The interface of assignments needs it in the layer of the syntax.

#include "vornrun/datastructures/vorn/syntax/ValueRef.h"  // IWYU pragma: export
