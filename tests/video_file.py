"""Reads recordings back with the decoder's own programs."""

import json
import subprocess

import numpy


def probe(file):
    """The video stream: codec_name, width, height, r_frame_rate, nb_read_frames, pix_fmt."""
    fields = "codec_name,width,height,r_frame_rate,nb_read_frames,pix_fmt"
    command = ["ffprobe", "-v", "error", "-count_frames", "-select_streams", "v:0", "-show_entries", f"stream={fields}"]
    output = subprocess.run(
        [*command, "-of", "json", str(file)], capture_output=True, text=True, check=True, timeout=60
    )
    return json.loads(output.stdout)["streams"][0]


def frame_count(file):
    return int(probe(file)["nb_read_frames"])


def frames(file):
    """All frames as an array (count, height, width, 3), upper row first."""
    stream = probe(file)
    command = ["ffmpeg", "-v", "error", "-i", str(file), "-f", "rawvideo", "-pix_fmt", "rgb24", "-"]
    output = subprocess.run(command, capture_output=True, check=True, timeout=60).stdout
    return numpy.frombuffer(output, numpy.uint8).reshape(-1, stream["height"], stream["width"], 3)
