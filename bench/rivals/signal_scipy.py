"""scipy.signal: filters, decimation and the envelope of a day at 100 Hz, in double precision."""

import numpy
from scipy import signal

import rival


class Scipy:
    def prepare(self, work):
        self.samples = work.samples[0].astype(numpy.float64)
        self.band_pass = signal.butter(4, [1, 10], "bandpass", fs=100, output="sos")

    def filter(self):
        signal.sosfilt(self.band_pass, self.samples)

    def filtfilt(self):
        signal.sosfiltfilt(self.band_pass, self.samples)

    def decimate(self):
        signal.decimate(self.samples, 10)

    def envelope(self):
        numpy.abs(signal.hilbert(self.samples))


rival.serve(Scipy(), ("filter", "filtfilt", "decimate", "envelope"))
