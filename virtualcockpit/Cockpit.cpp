// Holds the parts of the virtual cockpit together.
