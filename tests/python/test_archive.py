"""Archives of days, and walls of drums in several processes."""

import datetime
import os
import signal
import threading
import time

import numpy
import pytest

import xov

DAYS = [datetime.date(2024, 2, 28), datetime.date(2024, 2, 29), datetime.date(2024, 3, 1)]


@pytest.fixture(scope="module")
def root(tmp_path_factory):
    """Three days of one sample every two seconds, as the command writes them."""
    import subprocess

    root = tmp_path_factory.mktemp("sds")
    for number, day in enumerate(DAYS):
        samples = numpy.sin(numpy.arange(43_200) * 0.05 * (number + 1)).astype(">f4")
        header = numpy.full(70, -12345, ">f4"), numpy.full(40, -12345, ">i4")
        header[0][0], header[0][5] = 2, 0
        header[1][:6] = day.year, day.timetuple().tm_yday, 0, 0, 0, 0
        header[1][6], header[1][9], header[1][15], header[1][35] = 6, samples.size, 1, 1
        texts = [b"BFO     ", b"-12345          "] + [b"-12345  "] * 17 + [b"LHZ     ", b"GR      "] + [b"-12345  "] * 2
        sac = root / "day.sac"
        sac.write_bytes(header[0].tobytes() + header[1].tobytes() + b"".join(texts) + samples.tobytes())
        folder = root / str(day.year) / "GR" / "BFO" / "LHZ.D"
        folder.mkdir(parents=True, exist_ok=True)
        mseed = root / "day.mseed"
        mseed.unlink(missing_ok=True)
        subprocess.run([os.environ["XOV_COMMAND"], "convert", sac, "-o", mseed], check=True)
        mseed.rename(folder / f"GR.BFO..LHZ.D.{day.year}.{day.timetuple().tm_yday:03d}")
        sac.unlink()
    return root


@pytest.fixture
def days(root):
    return xov.archive(root, "GR.BFO.*.LHZ")


def test_a_day_is_drawn_as_its_file(root, days):
    file = root / "2024" / "GR" / "BFO" / "LHZ.D" / "GR.BFO..LHZ.D.2024.060"
    assert xov.drum(days.day("2024-02-29T12:00:00")).bytes("png") == xov.drum(file).bytes("png")


def test_a_span_holds_what_lies_in_it(days):
    assert xov.section(days.between("2024-02-28T06:00", "2024-02-28T07:00")).pages == 1
    with pytest.raises(xov.Error):
        xov.section(days.between("2020-01-01", "2020-01-02"))


def test_a_root_that_is_no_folder_is_refused(tmp_path):
    with pytest.raises(FileNotFoundError, match="expected an archive"):
        xov.archive(tmp_path / "none", "GR.BFO.*.LHZ")


@pytest.mark.parametrize("processes", [1, 2])
def test_a_wall_of_drums_has_a_file_each_day(days, tmp_path, processes):
    assert xov.drums(days, (DAYS[0], DAYS[-1]), out=tmp_path / "wall", processes=processes) == {}
    names = sorted(os.listdir(tmp_path / "wall"))
    assert names == [f"GR.BFO._.LHZ.{day}.png" for day in DAYS]
    first = (tmp_path / "wall" / names[0]).read_bytes()
    assert first == xov.drum(days.day(DAYS[0])).bytes("png")


def test_a_wall_goes_on_where_it_stopped(days, tmp_path):
    kept = tmp_path / f"GR.BFO._.LHZ.{DAYS[1]}.png"
    kept.write_bytes(b"is there")
    assert xov.drums(days, DAYS, out=tmp_path, processes=1) == {}
    assert kept.read_bytes() == b"is there"
    assert len(os.listdir(tmp_path)) == 3


def test_days_without_data_are_told(days, tmp_path):
    wrong = xov.drums(days, [DAYS[0], "2020-01-01"], out=tmp_path, processes=1)
    assert [os.path.basename(path) for path in wrong] == ["GR.BFO._.LHZ.2020-01-01.png"]
    assert os.listdir(tmp_path) == [f"GR.BFO._.LHZ.{DAYS[0]}.png"]


def test_a_killed_worker_leaves_no_half_file_and_the_next_call_draws_the_rest(days, tmp_path):
    whole = xov.drum(days.day(DAYS[0])).bytes("png")
    many = [DAYS[0]] + [DAYS[1]] * 0 + [DAYS[2]]

    def kill_children():
        killed = 0
        for _ in range(600):
            for entry in os.listdir("/proc"):
                if not entry.isdigit():
                    continue
                try:
                    with open(f"/proc/{entry}/stat") as file:
                        parent = int(file.read().rsplit(")", 1)[1].split()[1])
                    with open(f"/proc/{entry}/cmdline", "rb") as file:
                        is_worker = b"spawn_main" in file.read()
                except (OSError, IndexError):
                    continue
                if parent == os.getpid() and is_worker:
                    os.kill(int(entry), signal.SIGKILL)
                    killed += 1
            if killed:
                return
            time.sleep(0.01)

    killer = threading.Thread(target=kill_children)
    killer.start()
    with pytest.raises(xov.Error, match="killed"):
        xov.drums(days, many, out=tmp_path, processes=2)
    killer.join()
    assert xov.drums(days, many, out=tmp_path, processes=1) == {}
    assert (tmp_path / f"GR.BFO._.LHZ.{DAYS[0]}.png").read_bytes() == whole
    assert len(os.listdir(tmp_path)) == 2


def test_a_dask_client_draws_the_same_wall(days, tmp_path):
    distributed = pytest.importorskip("distributed", reason="python3-distributed is not installed")
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        with distributed.Client(cluster) as client:
            assert xov.drums(days, DAYS, out=tmp_path, client=client) == {}
    assert (tmp_path / f"GR.BFO._.LHZ.{DAYS[0]}.png").read_bytes() == xov.drum(days.day(DAYS[0])).bytes("png")
