"""Job objects and record trees of libbkoq in gdb."""
