"""What a type table of 3657 descriptors and 7540 cast entries costs.

    tools/bench catalogue

Every import runs in a fresh interpreter that has loaded the module's libraries before; the median of several is shown.
"""

import os
import statistics
import subprocess
import sys
import timeit

IMPORT = """
import ctypes, glob, os, resource, sys, time
for folder in sys.path:
    for library in glob.glob(os.path.join(folder, "libhyx_reference.so")):
        ctypes.CDLL(library)
{before}
start_memory = int(open("/proc/self/statm").read().split()[1])
start = time.perf_counter()
import {module}
took = time.perf_counter() - start
memory = int(open("/proc/self/statm").read().split()[1]) - start_memory
print(took * 1e3, memory * os.sysconf("SC_PAGE_SIZE") / 1024)
"""


def import_cost(module, before=""):
    runs = []
    for _ in range(11):
        code = IMPORT.format(module=module, before=before)
        output = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True).stdout
        runs.append([float(value) for value in output.split()])
    return [statistics.median(column) for column in zip(*runs)]


def call_time(function, *arguments):
    timer = timeit.Timer(lambda: function(*arguments))
    return min(timer.repeat(20, 2000)) / 2000 * 1e9


def main():
    for label, module, before in [
        ("first of the family", "_synthetic", ""),
        ("beside a twin that knows all of its types", "_synthetic", "import _synthetic_twin"),
        ("_hyxOSG, first of the family", "_hyxOSG", ""),
    ]:
        milliseconds, kibibytes = import_cost(module, before)
        print(f"import, {label:45} {milliseconds:7.2f} ms {kibibytes:8.0f} KiB")
    import _synthetic as m

    print(f"look-up by name, cached {call_time(m.query_type, 'lib::Class0100 *'):8.0f} ns")
    handle = m.wrap_address(64, "lib::Class2000 *")
    base = m.cast_list("lib::Class2000 *")[-1]
    print(f"conversion to its own type, cached query {call_time(m.convert_object, handle, base):8.0f} ns")
    print(f"size of the module: {os.path.getsize(m.__file__) / 1024:.0f} KiB")


if __name__ == "__main__":
    main()
