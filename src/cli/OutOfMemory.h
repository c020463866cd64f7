#pragma once

// An allocation that fails anywhere in orvel-cli, on any thread, ends the
// program with "内存不足" and exit code 6 instead of an abort.
namespace OutOfMemory {

void install();

} // namespace OutOfMemory
