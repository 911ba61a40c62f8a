"""Unpacks and packs wheels, with their record of files."""

import base64
import csv
import hashlib
import zipfile
from pathlib import Path


def unpack(wheel: Path, folder: Path) -> None:
    with zipfile.ZipFile(wheel) as archive:
        for entry in archive.infolist():
            path = Path(archive.extract(entry, folder))
            if mode := entry.external_attr >> 16:
                path.chmod(mode & 0o777)


def pack(folder: Path, wheel: Path) -> None:
    """Packs a folder; the times of its files do not matter to the result."""
    (information,) = folder.glob("*.dist-info")
    record = information / "RECORD"
    files = sorted(path for path in folder.rglob("*") if path.is_file() and path != record)
    with open(record, "w", newline="") as text:
        rows = csv.writer(text, lineterminator="\n")
        for path in files:
            digest = base64.urlsafe_b64encode(hashlib.sha256(path.read_bytes()).digest()).rstrip(b"=").decode()
            rows.writerow([path.relative_to(folder), f"sha256={digest}", path.stat().st_size])
        rows.writerow([record.relative_to(folder), "", ""])
    with zipfile.ZipFile(wheel, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in [*files, record]:
            entry = zipfile.ZipInfo(str(path.relative_to(folder)))
            entry.external_attr = (0o100000 | path.stat().st_mode & 0o777) << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, path.read_bytes())
