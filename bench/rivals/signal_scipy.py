"""scipy.signal: filters, decimation, envelope and spectrogram of a day at 100 Hz, in double precision."""

import numpy
from scipy import fft, signal

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

    def spectrogram(self):
        # What the columns of a picture need, too: the mean of those in each, in dB.
        power = signal.spectrogram(self.samples, fs=100, window="hann", nperseg=1024, noverlap=512)[2]
        edges = numpy.linspace(0, power.shape[1], 801).astype(int)[:-1]
        10 * numpy.log10(numpy.add.reduceat(power, edges, axis=1))

    def transforms(self):
        segments = numpy.lib.stride_tricks.sliding_window_view(self.samples, 1024)[::512]
        fft.rfft(segments)

    def envelope(self):
        numpy.abs(signal.hilbert(self.samples))


rival.serve(Scipy(), ("filter", "filtfilt", "decimate", "envelope", "spectrogram", "transforms"))
