/// \file
/// Nothing of its own: CMake compiles the headers that most tests share along with this source.
