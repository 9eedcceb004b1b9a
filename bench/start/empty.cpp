// SPDX-License-Identifier: MIT
//
// A program that only starts, to be compared with one that is linked with the library.

int main() {}
