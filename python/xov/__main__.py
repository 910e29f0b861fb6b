"""`python -m xov` is the command xov."""

import sys

from . import _core

sys.exit(_core.main(sys.argv[1:]))
