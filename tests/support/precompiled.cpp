// SPDX-License-Identifier: MIT
//
// The program for which the headers of all tests, and those of all examples, are precompiled.

int main() {}
