"""Makes the library through which the others reach those that a driver, a display or nobody brings.

It has a function for each that they need. The first call looks the real one up, so that nothing but drawing needs a
graphics driver, and a driver without the old libGL serves as well through EGL. Nothing here uses what else is named:
libcurl and OpenSSL by the library of journals for remote files, OpenSSL by that of the remote page for encrypted pages,
tickets by that of messages, GLib by that of letters for programs that use it.
"""

import subprocess
from pathlib import Path

NAME = "libhyx_late.so"
# Libraries, and how the names of their functions begin. What nothing here calls stays out of the wheel.
DRIVERS = {"libGL.so.1": ("",), "libX11.so.6": ("X",)}
UNUSED = {
    "libcurl.so.4": ("curl_",),
    "libglib-2.0.so.0": ("g_",),
    "libgssapi_krb5.so.2": ("gss_", "GSS_"),
    "libnorm.so.1": ("Norm",),
    "libssl.so.3": ("SSL_", "TLS_", "OPENSSL_init_ssl"),
    "libcrypto.so.3": (
        "BIO_",
        "CRYPTO_",
        "EC_",
        "ERR_",
        "EVP_",
        "HMAC",
        "OBJ_",
        "OPENSSL_",
        "PEM_",
        "SHA",
        "X509_",
        "d2i_",
        "i2d_",
    ),
}
# What an absent function answers: nothing, which every caller takes for "there is no such thing".
RESOLVER = r"""
#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

typedef void *(*Finder)(char const *);
extern char const *const hyx_late_names[];

static long absent(void) { return 0; }

static void *in(char const *library, char const *name) {
    void *const handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    return handle ? dlsym(handle, name) : 0;
}

struct Owner {
    char const *prefix, *library;
};

static struct Owner const owners[] = {{owners}};

static struct Owner const *owner_of(char const *name) {
    for (struct Owner const *owner = owners; owner->prefix; ++owner)
        if (strncmp(name, owner->prefix, strlen(owner->prefix)) == 0)
            return owner;
    return 0;
}

static void *find(char const *name) {
    struct Owner const *const owner = owner_of(name);
    if (owner)
        return in(owner->library, name);
    void *found = in("libGL.so.1", name);
    if (!found)
        found = in("libOpenGL.so.0", name);
    Finder const egl = found ? 0 : (Finder)in("libEGL.so.1", "eglGetProcAddress");
    if (egl && strncmp(name, "glX", 3) != 0)
        found = egl(name);
    return found || strncmp(name, "glXGetProcAddress", 17) != 0 ? found : (void *)egl;
}

void *hyx_late_find(long place) {
    char const *const name = hyx_late_names[place];
    void *const found = find(name);
    if (!found && strncmp(name, "gl", 2) == 0 && strncmp(name, "glX", 3) != 0)
        fprintf(stderr, "there is no %s: install a graphics driver (libegl1 and libgl1-mesa-dri)\n", name);
    if (!found && name[0] == 'X')
        fprintf(stderr, "there is no %s: install libx11-6\n", name);
    return found ? found : (void *)absent;
}
"""
# A call goes through its slot. An empty one is filled first, with all registers that carry arguments kept.
COMMON = """
    .text
    .hidden hyx_late_find
hyx_late_fill:
    pushq %rbp
    movq %rsp, %rbp
    andq $-16, %rsp
    subq $192, %rsp
    movq %rdi, 0(%rsp)
    movq %rsi, 8(%rsp)
    movq %rdx, 16(%rsp)
    movq %rcx, 24(%rsp)
    movq %r8, 32(%rsp)
    movq %r9, 40(%rsp)
    movq %rax, 48(%rsp)
{save}
    movq 8(%rbp), %rdi
    call hyx_late_find
    movq 8(%rbp), %rcx
    leaq hyx_late_slots(%rip), %rdx
    movq %rax, (%rdx,%rcx,8)
    movq %rax, %r11
{load}
    movq 0(%rsp), %rdi
    movq 8(%rsp), %rsi
    movq 16(%rsp), %rdx
    movq 24(%rsp), %rcx
    movq 32(%rsp), %r8
    movq 40(%rsp), %r9
    movq 48(%rsp), %rax
    leave
    addq $8, %rsp
    jmp *%r11
"""
FUNCTION = """
    .globl {name}
    .type {name}, @function
{name}:
    movq hyx_late_slots+{offset}(%rip), %r11
    testq %r11, %r11
    jz 1f
    jmp *%r11
1:  pushq ${place}
    jmp hyx_late_fill
    .size {name}, .-{name}
"""


def assembly(names: list[str]) -> str:
    save = "\n".join(f"    movups %xmm{n}, {64 + 16 * n}(%rsp)" for n in range(8))
    load = "\n".join(f"    movups {64 + 16 * n}(%rsp), %xmm{n}" for n in range(8))
    parts = [COMMON.format(save=save, load=load)]
    parts += [FUNCTION.format(name=name, offset=8 * place, place=place) for place, name in enumerate(names)]
    parts.append("    .section .rodata")
    parts += [f'hyx_late_name_{place}: .string "{name}"' for place, name in enumerate(names)]
    parts.append('    .section .data.rel.ro,"aw"\n    .balign 8\n    .globl hyx_late_names\n    .hidden hyx_late_names')
    parts.append("hyx_late_names:")
    parts += [f"    .quad hyx_late_name_{place}" for place in range(len(names))]
    parts += ["    .bss", "    .balign 8", f"hyx_late_slots: .zero {8 * len(names)}"]
    parts.append('    .section .note.GNU-stack,"",@progbits')
    return "\n".join(parts) + "\n"


def resolver() -> str:
    rows = [
        f'{{"{prefix}", "{name}"}}' for name, prefixes in (DRIVERS | UNUSED).items() for prefix in prefixes if prefix
    ]
    return RESOLVER.replace("{{owners}}", "{%s, {0, 0}}" % ", ".join(rows))


def make_library(names: dict[str, str], folder: Path) -> Path:
    """`names` gives each function its version; "" for none."""
    source, lookup, library = folder / "late.s", folder / "late.c", folder / NAME
    source.write_text(assembly(sorted(names)))
    lookup.write_text(resolver())
    versions = folder / "late.map"
    nodes = [
        f"{kind} {{ {' '.join(n + ';' for n in names if names[n] == kind)} }};" for kind in {*names.values()} - {""}
    ]
    versions.write_text("\n".join(nodes) + "\n")
    command = [
        "gcc",
        "-shared",
        "-fPIC",
        "-O2",
        "-Wl,-z,nodelete,-s",
        f"-Wl,-soname,{NAME}",
        f"-Wl,--version-script={versions}",
    ]
    subprocess.run([*command, "-o", library, source, lookup, "-ldl"], check=True)
    return library
