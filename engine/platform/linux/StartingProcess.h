#pragma once

/// What a process inherits from whoever started it, made fit for a program that opens files and goes on when
/// a write fails: standard files that were closed lead nowhere (the next file opened would take their
/// numbers, and be written to by every message), and a broken pipe or a limit of the file size makes a write
/// fail instead of ending the process. First thing in main().
void prepareStartingProcess();
