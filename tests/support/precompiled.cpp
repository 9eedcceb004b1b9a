// SPDX-License-Identifier: MIT
//
// The program for which the headers of all tests are precompiled.

int main() {}
