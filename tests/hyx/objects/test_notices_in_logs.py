"""Notices reach the log that a script has set up, and files that are not there are warnings at the script's line."""

from subprocesses import run_python

LOG = """
import logging, sys
logging.basicConfig(stream=sys.stdout, format="%(name)s %(levelname)s %(message)s")
import hyx
hyx.Notify.instance().notify(hyx.Notify.NOTIFY_ERROR, "100 % lost")
hyx.Notify.instance().notify(hyx.Notify.NOTIFY_INFO, "unheard")
logging.getLogger("hyx").setLevel(logging.CRITICAL)
hyx.Notify.instance().notify(hyx.Notify.NOTIFY_ERROR, "filtered")
"""


def test_notices_go_to_the_log_once_there_is_one():
    done = run_python(LOG)
    assert (done.stdout, done.stderr) == ("hyx ERROR 100 % lost\n", "")


def test_without_a_log_they_go_to_the_console():
    done = run_python("import hyx, logging\nhyx.Notify.instance().notify(3, 'here')")
    assert (done.stdout, done.stderr) == ("", "here\n")


MISSING = """
import warnings
import hyxOSG
with warnings.catch_warnings(record=True) as caught:
    warnings.simplefilter("always")
    assert hyxOSG.readNodeFile("no.obj") is None
    print(caught[0].category.__name__, caught[0].lineno, caught[0].message)
warnings.simplefilter("error")
try:
    hyxOSG.readNodeFile("no.obj")
except RuntimeWarning as warning:
    print("raised", warning)
"""


def test_a_missing_file_is_a_warning_that_can_be_made_an_error():
    done = run_python(MISSING)
    assert done.stdout.splitlines() == [
        'RuntimeWarning 6 there is no model file "no.obj"',
        'raised there is no model file "no.obj"',
    ], done.stderr
