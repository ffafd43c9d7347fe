// Filled by the command line.
