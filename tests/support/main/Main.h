#pragma once

/// @file
/// The main function of a test. The tests of a folder are one program, so each one's has the test's name;
/// main.cpp picks one by it. Every test includes this; the build says what VELTRIX_TEST_MAIN is
/// (run_tst_Name). Precompiled headers allow no other name for "main" before them, which is why no compiler
/// option gives it.
#define main VELTRIX_TEST_MAIN
