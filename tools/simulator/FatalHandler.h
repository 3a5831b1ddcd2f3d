#pragma once
/// \file
/// The last words of a process that ends by an exception nobody caught.

/// From now on std::terminate(), on whatever thread, writes what standard output still holds, then one line to standard
/// error, "vornrun: fatal: " and the exception's text, and ends the process with the abort signal. That is how an
/// exception ends the process that leaves main(), or the function of a worker thread.
void installFatalHandler();
