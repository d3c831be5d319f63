#!/usr/bin/env python3
"""Start and rest of the shell on a level with 120 block files, beside a Qt window with 12 pictures.

bench/mede_inicio.py BUILD-DIR [RUNS]

Interleaved runs (20) on a virtual display of its own; medians. Processor time and memory (PSS) are read 3 s after the
window is on the screen, when both sides have come to rest, so all that the start sets off is counted. Then the
processor time of 60 s at rest with the pointer off the windows.
"""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

DISCIPLINAS = "AV CI DE DI ED ES GE HI MA PO".split()


def lay_out(root, build):
    level = os.path.join(root, "QUOREL2001", "DBBLOCOS", "F1")
    os.makedirs(level)
    for month in range(1, 13):
        for discipline in DISCIPLINAS:
            text = f"<TM>Tema do mês {month}</TM>\r\n<OBJ>Objetivo</OBJ>\r\n"
            for n in range(1, 17):
                text += (f"[ROT<{n}>]\r\nNomeRot =Roteiro {n}\r\nCODROT:{month * 100 + n}\r\nFIG:\r\nSOM:\r\n"
                         f"<DESC>Descrição</DESC>\r\nNIVEL:F1\r\nDISC:{discipline}\r\n"
                         f"[<{n}>1]\r\nNome =Aula\r\nLinha =(1,1)\r\n\tTipo = Zeto\t\r\n")
            with open(os.path.join(level, f"{month:02}24{discipline}F1.EDB"), "wb") as file:
                file.write(text.encode("cp1252"))
    subprocess.run([f"{build}/bin/quorel-cadastro", "cria", os.path.join(root, "Cadastros.mdb")], check=True,
                   stdout=subprocess.DEVNULL)


def on_screen(pid):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(pid), "--name", "."],
                           capture_output=True, text=True)
    return bool(found.stdout.strip())


def pss(pid):
    """Proportional share of memory in MB."""
    with open(f"/proc/{pid}/smaps_rollup") as file:
        for line in file:
            if line.startswith("Pss:"):
                return int(line.split()[1]) / 1024
    raise RuntimeError("no Pss")


def cpu(pid):
    """Processor time in seconds of all threads of a process that still run."""
    total = 0
    for tid in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{tid}/schedstat") as file:
            total += int(file.read().split()[0])
    return total / 1e9


def start(command, env):
    process = subprocess.Popen(command, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    limit = time.monotonic() + 30
    while not on_screen(process.pid):
        if process.poll() is not None or time.monotonic() > limit:
            raise RuntimeError(f"{command[0]}: no window")
        time.sleep(0.05)
    time.sleep(3)
    return process


def measure(command, env):
    process = start(command, env)
    result = cpu(process.pid), pss(process.pid)
    process.kill()
    process.wait()
    return result


def main():
    build = os.path.abspath(sys.argv[1])
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 20
    home = tempfile.mkdtemp()
    read, write = os.pipe()
    display = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
                                "-noreset"],
                               pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    env = dict(os.environ, DISPLAY=":" + os.read(read, 16).decode().strip(), HOME=home, QUOREL_WINDIR=home + "/windir",
               XDG_RUNTIME_DIR=home + "/run", QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8")
    env.pop("WAYLAND_DISPLAY", None)
    os.environ["DISPLAY"] = env["DISPLAY"]
    os.mkdir(env["XDG_RUNTIME_DIR"], 0o700)
    try:
        lay_out(env["QUOREL_WINDIR"], build)
        sides = {"floor": [f"{build}/bench/piso_inicio"], "shell": [f"{build}/bin/quorel", "/NIVEL:F1"]}
        for command in sides.values():
            measure(command, env)  # not the first start
        results = {name: [] for name in sides}
        for _ in range(runs):
            for name, command in sides.items():
                results[name].append(measure(command, env))
        medians = {name: [statistics.median(column) for column in zip(*rows)] for name, rows in results.items()}
        for name, (seconds, memory) in medians.items():
            print(f"{name}: {seconds * 1000:.0f} ms, {memory:.1f} MB")
        print(f"ratio: processor time {medians['shell'][0] / medians['floor'][0]:.2f} (wanted 1.6), "
              f"memory {medians['shell'][1] / medians['floor'][1]:.2f} (wanted 1.8)")
        process = start(sides["shell"], env)
        before = cpu(process.pid)
        time.sleep(60)
        print(f"60 s at rest: {cpu(process.pid) - before:.4f} s of processor time (wanted under 0.02)")
        process.kill()
        process.wait()
    finally:
        display.kill()
        display.wait()
        shutil.rmtree(home, ignore_errors=True)


if __name__ == "__main__":
    main()
