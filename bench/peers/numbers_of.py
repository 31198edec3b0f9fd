"""The figures of the months, from one of the programs that are built (MELKAR_PEERS is their directory)."""
import os
import subprocess


def months():
    text = subprocess.run([os.environ["MELKAR_PEERS"] + "/floor_peer", "months"], capture_output=True, text=True, check=True)
    return [[int(figure) for figure in line.split()] for line in text.stdout.splitlines()]
