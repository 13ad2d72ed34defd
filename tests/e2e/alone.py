"""Makes a test run stand alone, so that nothing of the machine's is in its reach, nor it in another's way.

Where the kernel lets anybody make namespaces, a run gets a process table of its own (what it started ends with it,
however it ends), a network of nothing but loopback, and a file system in memory for all that it writes. Elsewhere
a watcher ends what a run left behind, and its network is the machine's.
"""

import atexit
import ctypes
import fcntl
import os
import shutil
import signal
import socket
import struct
import subprocess
import tempfile

FOLDER = "/tmp/marlowick-tests"  # where a run writes, in namespaces
SOCKETS = "/tmp/.X11-unix"  # where X servers listen
MARK = "MARLOWICK_TEST_RUN"  # in the environment of everything that a run starts
# All that a run keeps of the environment it was started in.
KEPT = ("PATH", "TERM", "USER", "RUNS", "MARLOWICK_PROGRAM", "MARLOWICK_SANDBOX", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS",
        "PYTHONDONTWRITEBYTECODE")
SPACES = 0x10000000 | 0x20000000 | 0x40000000 | 0x00020000  # users, processes, network, mounts
PR_SET_PDEATHSIG = 1

in_namespaces = False
number = os.getpid()  # that no other run of this machine has at the same time
libc = ctypes.CDLL(None, use_errno=True)


def enter():
    """Goes on in a process that stands alone; only the first call does anything."""
    global in_namespaces
    if MARK in os.environ:
        return
    kept = {name: os.environ[name] for name in KEPT if name in os.environ}
    os.environ.clear()
    os.environ.update(kept, LANG="C.UTF-8")
    for folder, mode in ((FOLDER, 0o755), (SOCKETS, 0o1777)):
        if not os.path.isdir(folder):
            os.mkdir(folder)
            os.chmod(folder, mode)
    in_namespaces = enter_namespaces()
    if in_namespaces:
        folder = FOLDER
        os.environ[MARK] = "namespaces"
    else:
        folder = tempfile.mkdtemp(prefix="marlowick-tests-")
        watch(folder)
    for name, variable in (("home", "HOME"), ("runtime", "XDG_RUNTIME_DIR"), ("config", "XDG_CONFIG_HOME"),
                           ("cache", "XDG_CACHE_HOME"), ("data", "XDG_DATA_HOME"), ("tmp", "TMPDIR")):
        os.environ[variable] = os.path.join(folder, name)
        os.mkdir(os.environ[variable], 0o700)
    tempfile.tempdir = os.environ["TMPDIR"]


def enter_namespaces():
    """Goes on in a child that has them, while this process waits for it and hands its status on. False where the
    kernel has none for us."""
    user, group = os.getuid(), os.getgid()
    if subprocess.run(["unshare", "-rnm", "mount", "-t", "tmpfs", "tmpfs", FOLDER], stderr=subprocess.DEVNULL).returncode:
        return False
    if libc.unshare(SPACES) != 0:
        return False
    for name, text in (("setgroups", "deny"), ("uid_map", f"0 {user} 1"), ("gid_map", f"0 {group} 1")):
        with open(f"/proc/self/{name}", "w") as file:
            file.write(text)
    hand_over()
    # The first process of the table: when it ends, the kernel ends all the others.
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
    for command in (["--make-rprivate", "/"], ["-t", "proc", "proc", "/proc"],
                    *(["-t", "tmpfs", "tmpfs", folder] for folder in (FOLDER, SOCKETS))):
        subprocess.run(["mount", *command], check=True)
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        fcntl.ioctl(any_socket, 0x8914, struct.pack("16sH14x", b"lo", 0x41))  # SIOCSIFFLAGS: up and running
    hand_over()
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
    return True


def hand_over():
    """Forks, and returns in the child; this process reaps all that comes to it and ends as the child does."""
    child = os.fork()
    if child == 0:
        return
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    while True:
        pid, status = os.wait()
        if pid == child:
            code = os.waitstatus_to_exitcode(status)
            os._exit(code if code >= 0 else 128 - code)


def watch(folder):
    """Forks a watcher, which ends what is left of this run once it has ended."""
    mark = f"{os.getpid()}-{os.urandom(4).hex()}"
    read, write = os.pipe()  # the end for writing stays open in this process alone
    if os.fork():
        os.close(read)
        os.environ[MARK] = mark
        atexit.register(os.close, write)
        return
    os.setsid()
    os.close(write)
    for number in (0, 1, 2):
        os.dup2(os.open(os.devnull, os.O_RDWR), number)
    os.read(read, 1)
    end_marked(f"{MARK}={mark}".encode())
    shutil.rmtree(folder, ignore_errors=True)
    os._exit(0)


def end_marked(mark):
    found = True
    while found:
        found = False
        for pid in filter(str.isdigit, os.listdir("/proc")):
            try:
                with open(f"/proc/{pid}/environ", "rb") as file:
                    if mark in file.read().split(b"\0"):
                        os.kill(int(pid), signal.SIGKILL)
                        found = True
            except OSError:  # another user's, or gone
                pass
