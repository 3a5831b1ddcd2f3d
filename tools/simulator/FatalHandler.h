#pragma once
/// \file
/// The message of a process that ends by an exception that nobody catches.

/// From now on std::terminate() flushes standard output, writes one line to standard error, "vornrun: fatal: " and the
/// text of the exception, and ends the process with the abort signal. This holds for every thread, and for an exception
/// that leaves main().
void installFatalHandler();
