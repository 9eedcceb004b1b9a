// SPDX-License-Identifier: MIT
//
// A library of the consumer's own.

int orvidConsumersOwn();

int orvidConsumersOwn() { return 0; }
