"""Loads the extension into gdb: `source bkoq_gdb.py`. gdb does so by itself with the library."""
import os
import sys

_folder = os.path.dirname(os.path.abspath(__file__))
if _folder not in sys.path:
    sys.path.insert(0, _folder)

# What root's gdb would write beside the modules would outlive the package.
_writes_none = sys.dont_write_bytecode
sys.dont_write_bytecode = True

import bkoqdebug.commands  # noqa: E402
import bkoqdebug.printers  # noqa: E402

sys.dont_write_bytecode = _writes_none

bkoqdebug.commands.register()
bkoqdebug.printers.register()
