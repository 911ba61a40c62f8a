# Sourced at the root: builds with the address and undefined-behaviour sanitizers, and runs what follows on that build.
tools/setup
export PATH="$PWD/build/venv/bin:$PATH"
[[ -e build-sanitizers/CMakeCache.txt ]] ||
    cmake --preset sanitizers -DPython_EXECUTABLE="$PWD/build/venv/bin/python" >/dev/null
ninja -C build-sanitizers --quiet
libasan=$(c++ -print-file-name=libasan.so)
export LD_PRELOAD="$libasan:$(c++ -print-file-name=libstdc++.so)"
# Python itself keeps memory until the end; a new/delete pair of the scene graph differs by design of its arrays.
export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1:allocator_may_return_null=1 UBSAN_OPTIONS=print_stacktrace=1
export HYX_BUILD="$PWD/build-sanitizers" PYTHONDONTWRITEBYTECODE=1
