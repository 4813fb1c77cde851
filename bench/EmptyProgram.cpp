// SPDX-License-Identifier: MIT
// The least that starting a C++ program costs: what StartUpBench measures the others by.
int main() {}
