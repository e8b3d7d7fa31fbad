// Builds every part of the program and hands each what it needs.
