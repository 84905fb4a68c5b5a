#!/usr/bin/env python3
"""Synthesises Tovrin's seven themed alert sounds as 16-bit mono WAV files.

Usage: generate_sounds.py OUTPUT_DIR

Only the standard library: oscillators, noise and filters with fixed seeds, so each build writes the
same sounds. Brass is a band-limited sawtooth with a lip glide, vibrato and a loudness-tracking
low-pass; metal is a noise transient plus inharmonic bar modes; voices are glottal pulses through
formant resonators; drums are membranes whose pitch drops after the strike.
"""

import cmath
import math
import os
import random
import struct
import sys
import wave

RATE = 44100
TAU = 2.0 * math.pi
BLOCK = 32  # samples between updates of a time-varying filter


def seconds(n):
    return n / RATE


def samples(t):
    return int(round(t * RATE))


def mix_into(buf, sig, start, gain=1.0):
    """Adds sig at start seconds; its last few milliseconds fade so that a cut never clicks."""
    off = samples(start)
    n = len(sig)
    if off + n > len(buf):
        buf.extend([0.0] * (off + n - len(buf)))
    fade = samples(0.005)
    for i, v in enumerate(sig):
        left = n - i
        buf[off + i] += v * (gain if left >= fade else gain * left / fade)


def noise(rng, n):
    g = rng.uniform
    return [g(-1.0, 1.0) for _ in range(n)]


# --- Filters -------------------------------------------------------------------------------------


def coefficients(kind, freq, q):
    """RBJ biquad, normalised: b0, b1, b2, a1, a2. Band-pass has 0 dB at its centre."""
    freq = min(max(freq, 10.0), RATE * 0.45)
    w = TAU * freq / RATE
    cw, alpha = math.cos(w), math.sin(w) / (2.0 * q)
    a0 = 1.0 + alpha
    if kind == "lp":
        b0, b1, b2 = (1 - cw) / 2, 1 - cw, (1 - cw) / 2
    elif kind == "hp":
        b0, b1, b2 = (1 + cw) / 2, -(1 + cw), (1 + cw) / 2
    else:
        b0, b1, b2 = alpha, 0.0, -alpha
    return b0 / a0, b1 / a0, b2 / a0, -2 * cw / a0, (1 - alpha) / a0


def biquad(sig, kind, freq, q=0.707):
    """Filters sig; freq is a number or a function of time in seconds."""
    varying = callable(freq)
    b0, b1, b2, a1, a2 = coefficients(kind, freq(0.0) if varying else freq, q)
    x1 = x2 = y1 = y2 = 0.0
    out = [0.0] * len(sig)
    for i, x in enumerate(sig):
        if varying and i % BLOCK == 0:
            b0, b1, b2, a1, a2 = coefficients(kind, freq(seconds(i)), q)
        y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2
        x2, x1, y2, y1 = x1, x, y1, y
        out[i] = y
    return out


def one_pole_lowpass(sig, freq):
    k = 1.0 - math.exp(-TAU * freq / RATE)
    y = 0.0
    out = [0.0] * len(sig)
    for i, x in enumerate(sig):
        y += k * (x - y)
        out[i] = y
    return out


def smooth_noise(rng, n, rate):
    """Random wobble in -1..1 that changes about `rate` times a second."""
    step = max(1, samples(1.0 / rate))
    points = [rng.uniform(-1.0, 1.0) for _ in range(n // step + 2)]
    out = [0.0] * n
    for i in range(n):
        j, frac = divmod(i, step)
        f = frac / step
        f = f * f * (3 - 2 * f)
        out[i] = points[j] + (points[j + 1] - points[j]) * f
    return out


def reverb(sig, wet=0.25, room=0.84, damp=0.35, tail=0.6):
    """A small Schroeder hall: parallel damped combs into series all-passes."""
    scale = RATE / 44100.0
    combs = [int(d * scale) for d in (1116, 1188, 1277, 1356, 1422, 1491)]
    passes = [int(d * scale) for d in (556, 441, 341)]
    src = sig + [0.0] * samples(tail)
    n = len(src)
    acc = [0.0] * n
    for d in combs:
        line = [0.0] * d
        pos, store = 0, 0.0
        for i in range(n):
            y = line[pos]
            store = y * (1 - damp) + store * damp
            line[pos] = src[i] * 0.015 + store * room
            acc[i] += y
            pos = pos + 1 if pos + 1 < d else 0
    for d in passes:
        line = [0.0] * d
        pos = 0
        for i in range(n):
            b = line[pos]
            x = acc[i]
            acc[i] = b - x
            line[pos] = x + b * 0.5
            pos = pos + 1 if pos + 1 < d else 0
    return [src[i] * (1 - wet) + acc[i] * wet * 3.0 for i in range(n)]


# --- Sources -------------------------------------------------------------------------------------


def sawtooth(pitch, n):
    """Band-limited (polyBLEP) sawtooth; pitch is a list of frequencies, one per sample."""
    out = [0.0] * n
    phase = 0.0
    for i in range(n):
        dt = pitch[i] / RATE
        phase += dt
        if phase >= 1.0:
            phase -= 1.0
        v = 2.0 * phase - 1.0
        if phase < dt:
            t = phase / dt
            v -= t + t - t * t - 1.0
        elif phase > 1.0 - dt:
            t = (phase - 1.0) / dt
            v -= t * t + t + t + 1.0
        out[i] = v
    return out


def partial(freq, decay, n, amp=1.0, phase=0.0):
    """An exponentially decaying sine, by a rotating phasor."""
    step = cmath.exp(complex(-1.0 / (decay * RATE), TAU * freq / RATE))
    z = amp * cmath.exp(complex(0.0, phase))
    out = [0.0] * n
    for i in range(n):
        out[i] = z.imag
        z *= step
    return out


def envelope(points, n):
    """Linear segments through (time, level) points; holds the last level."""
    out = [0.0] * n
    k = 0
    for i in range(n):
        t = seconds(i)
        while k + 1 < len(points) and points[k + 1][0] <= t:
            k += 1
        if k + 1 < len(points):
            (t0, v0), (t1, v1) = points[k], points[k + 1]
            out[i] = v0 + (v1 - v0) * (t - t0) / (t1 - t0)
        else:
            out[i] = points[-1][1]
    return out


# --- Instruments ---------------------------------------------------------------------------------


def brass(rng, notes, amp_points, duration, vibrato=0.007, dark=500.0, bright=3200.0):
    """One horn: notes are (start time, frequency); a tongued glide joins them."""
    n = samples(duration)
    amp = envelope(amp_points, n)
    vib_rate = rng.uniform(4.6, 5.6)
    vib_phase = rng.uniform(0, TAU)
    wobble = smooth_noise(rng, n, 3.0)
    pitch = [0.0] * n
    k, note_start, prev = 0, 0.0, notes[0][1]
    for i in range(n):
        t = seconds(i)
        if k + 1 < len(notes) and t >= notes[k + 1][0]:
            prev = notes[k][1]
            k += 1
            note_start = notes[k][0]
        target = notes[k][1]
        since = t - note_start
        # The lips start flat and settle on the note within a few tens of milliseconds.
        start_from = prev if k > 0 else target * 0.94
        f = target + (start_from - target) * math.exp(-since / 0.035)
        depth = vibrato * min(1.0, max(0.0, (since - 0.25) / 0.4))
        f *= 1.0 + depth * math.sin(TAU * vib_rate * t + vib_phase) + 0.0015 * wobble[i]
        pitch[i] = f
    tone = sawtooth(pitch, n)
    # Louder brass is brighter: the cut-off follows the envelope.
    lp = biquad(tone, "lp", lambda t: dark + (bright - dark) * amp[min(n - 1, samples(t))] ** 1.5, 1.1)
    lp = biquad(lp, "lp", lambda t: dark * 1.5 + (bright - dark) * amp[min(n - 1, samples(t))] ** 2, 0.8)
    breath = biquad(noise(rng, n), "bp", 1400.0, 0.8)
    return [(lp[i] + 0.04 * breath[i]) * amp[i] for i in range(n)]


def metal_strike(rng, fundamental, duration, brightness=1.0, ring=1.0):
    """A blade struck against another: a hiss of contact plus inharmonic, beating bar modes."""
    n = samples(duration)
    out = [0.0] * n
    ratios = [1.0, 2.756, 5.404, 8.933, 13.34]
    for idx, r in enumerate(ratios):
        f = fundamental * r * rng.uniform(0.985, 1.015)
        if f > RATE * 0.45:
            continue
        decay = ring * 0.9 / (1.0 + 0.5 * idx)
        a = 0.6 / (1.0 + 0.35 * idx)
        for twin in (0.0, rng.uniform(2.0, 7.0)):
            p = partial(f + twin, decay, n, a * 0.5, rng.uniform(0, TAU))
            for i in range(n):
                out[i] += p[i]
    for _ in range(9):
        f = rng.uniform(2500.0, 9500.0)
        p = partial(f, ring * rng.uniform(0.08, 0.45), n, rng.uniform(0.05, 0.22) * brightness,
                    rng.uniform(0, TAU))
        for i in range(n):
            out[i] += p[i]
    hiss = biquad(noise(rng, samples(0.08)), "hp", 2500.0, 0.7)
    for i, v in enumerate(hiss):
        out[i] += v * 1.4 * brightness * math.exp(-seconds(i) / 0.012)
    attack = samples(0.0015)
    for i in range(attack):
        out[i] *= i / attack
    return out


def membrane(rng, start_freq, end_freq, duration, decay=0.55, weight=1.0):
    """A big drum: the skin's pitch drops after the strike; a felt mallet adds a dull thump."""
    n = samples(duration)
    out = [0.0] * n
    phase1 = phase2 = 0.0
    for i in range(n):
        t = seconds(i)
        f = end_freq + (start_freq - end_freq) * math.exp(-t / 0.045)
        phase1 += TAU * f / RATE
        phase2 += TAU * f * 1.59 / RATE
        body = math.sin(phase1) * math.exp(-t / decay)
        overtone = 0.35 * math.sin(phase2) * math.exp(-t / (decay * 0.3))
        out[i] = body + overtone
    thump = biquad(noise(rng, samples(0.12)), "lp", 700.0, 0.9)
    for i, v in enumerate(thump):
        out[i] += 0.9 * v * math.exp(-seconds(i) / 0.018)
    rattle = biquad(noise(rng, n), "bp", 220.0, 1.2)
    for i in range(n):
        out[i] += 0.25 * rattle[i] * math.exp(-seconds(i) / (decay * 0.5))
    # Drive it a little, for the weight of a skin hit hard.
    return [math.tanh(weight * 1.6 * v) for v in out]


def plucked_string(rng, freq, duration, damping=0.996):
    """A bowstring let go: Karplus-Strong."""
    period = max(2, int(RATE / freq))
    line = noise(rng, period)
    n = samples(duration)
    out = [0.0] * n
    pos = 0
    for i in range(n):
        nxt = (pos + 1) % period
        v = line[pos]
        line[pos] = damping * 0.5 * (v + line[nxt])
        out[i] = v
        pos = nxt
    return out


def whoosh(rng, duration, high, low):
    """One arrow passing: band-passed air whose pitch falls as it goes by, with fletching flutter."""
    n = samples(duration)
    src = noise(rng, n)
    peak = rng.uniform(0.45, 0.65)
    band = biquad(src, "bp", lambda t: low + (high - low) / (1.0 + math.exp((t / duration - peak) * 9.0)),
                  rng.uniform(2.0, 3.5))
    flutter_rate = rng.uniform(35.0, 70.0)
    out = [0.0] * n
    for i in range(n):
        x = seconds(i) / duration
        env = math.exp(-((x - peak) ** 2) / (2 * 0.18**2))
        out[i] = band[i] * env * (0.8 + 0.2 * math.sin(TAU * flutter_rate * seconds(i)))
    return out


# --- The seven sounds ----------------------------------------------------------------------------


def horn_of_gondor(rng):
    # A low call that climbs a fifth and swells before it dies away.
    d3, a3 = 146.83, 220.0
    dur = 2.3
    amp = [(0.0, 0.0), (0.07, 0.75), (0.2, 0.62), (0.52, 0.6), (0.6, 0.35), (0.66, 0.8),
           (1.4, 1.0), (1.95, 0.7), (2.2, 0.0)]
    lead = brass(rng, [(0.0, d3), (0.6, a3)], amp, dur, vibrato=0.008)
    body = brass(rng, [(0.0, d3 / 2), (0.6, a3 / 2)], amp, dur, vibrato=0.004, bright=1500.0)
    out = [lead[i] + 0.35 * body[i] for i in range(len(lead))]
    return reverb(out, wet=0.28, tail=0.35)


def horns_of_vengeance(rng):
    # Five horns in a dark minor chord, entering one after another and swelling together.
    chord = [73.42, 110.0, 146.83, 174.61, 220.0]
    dur = 2.2
    out = [0.0] * samples(dur)
    for k, f in enumerate(chord):
        start = 0.06 * k + rng.uniform(0.0, 0.03)
        length = dur - start
        amp = [(0.0, 0.0), (0.12, 0.55), (0.9, 0.8), (length - 0.45, 1.0), (length - 0.05, 0.0)]
        voice = brass(rng, [(0.0, f * rng.uniform(0.997, 1.003))], amp, length,
                      vibrato=0.005, dark=350.0, bright=2400.0)
        mix_into(out, voice, start, 0.55 if f < 100 else 0.4)
    return reverb(out, wet=0.35, room=0.87, tail=0.3)


def clash_of_swords(rng):
    out = [0.0] * samples(2.0)
    for start, f0, gain, ring in ((0.0, 760.0, 0.7, 0.6), (0.38, 845.0, 0.8, 0.6), (0.74, 690.0, 1.0, 1.0)):
        mix_into(out, metal_strike(rng, f0, 2.0 - start, ring=ring), start, gain)
    return reverb(out, wet=0.2, tail=0.2)


def drawn_steel(rng):
    # The blade scrapes out of the scabbard, rising in pitch, then rings free.
    scrape_len = 0.72
    n = samples(scrape_len)
    friction = smooth_noise(rng, n, 45.0)
    src = noise(rng, n)
    scrape = biquad(src, "bp", lambda t: 1800.0 + 4200.0 * (t / scrape_len) ** 1.4, 5.0)
    grit = biquad(src, "hp", 7000.0, 0.7)
    env = envelope([(0.0, 0.0), (0.06, 0.5), (0.55, 0.9), (scrape_len, 1.0)], n)
    drive = [(scrape[i] + 0.1 * grit[i]) * env[i] * (0.65 + 0.35 * friction[i]) for i in range(n)]
    # The blade's own modes, excited by the scraping.
    sung = [0.0] * n
    for f in (1310.0, 3610.0, 7080.0):
        res = biquad(drive, "bp", f, 60.0)
        for i in range(n):
            sung[i] += res[i] * 2.5
    out = [0.0] * samples(2.1)
    mix_into(out, [drive[i] + sung[i] for i in range(n)], 0.0, 1.0)
    mix_into(out, metal_strike(rng, 620.0, 2.1 - scrape_len, brightness=0.6, ring=1.0),
             scrape_len - 0.01, 0.55)
    return reverb(out, wet=0.18, tail=0.2)


def arrow_volley(rng):
    out = [0.0] * samples(2.0)
    # Bowstrings released together.
    for _ in range(7):
        twang = plucked_string(rng, rng.uniform(85.0, 130.0), 0.5, damping=0.97)
        mix_into(out, biquad(twang, "lp", 1800.0), rng.uniform(0.0, 0.09), 0.35)
    # The arrows passing overhead.
    for _ in range(26):
        start = rng.uniform(0.1, 0.55)
        length = rng.uniform(0.45, 0.75)
        mix_into(out, whoosh(rng, length, rng.uniform(2600.0, 4200.0), rng.uniform(700.0, 1100.0)),
                 start, rng.uniform(0.35, 0.7))
    # And landing: thuds into wood and earth.
    for _ in range(11):
        n = samples(0.12)
        knock = partial(rng.uniform(170.0, 320.0), 0.025, n, 0.8)
        thud = biquad(noise(rng, n), "lp", 900.0, 0.9)
        hit = [knock[i] + 0.6 * thud[i] * math.exp(-seconds(i) / 0.02) for i in range(n)]
        mix_into(out, hit, rng.uniform(1.05, 1.6), rng.uniform(0.4, 0.8))
    return reverb(out, wet=0.15, tail=0.15)


def war_cry(rng):
    # A crowd's "Haaah!": many voices, each its own pitch and timing, through the formants of an
    # open shouted vowel; three groups of voice sizes get formants of their own.
    dur = 1.9
    total = [0.0] * samples(dur)
    for scale in (0.93, 1.0, 1.08):
        group = [0.0] * samples(dur)
        for _ in range(5):
            f0 = rng.uniform(105.0, 185.0)
            start = rng.uniform(0.0, 0.14)
            length = rng.uniform(1.35, dur - start - 0.05)
            n = samples(length)
            wobble = smooth_noise(rng, n, 7.0)
            vib = rng.uniform(5.0, 6.5)
            pitch = [0.0] * n
            for i in range(n):
                x = seconds(i) / length
                contour = 0.82 + 0.38 * min(1.0, x / 0.18) - 0.1 * x - 0.25 * max(0.0, x - 0.82) / 0.18
                pitch[i] = f0 * contour * (1 + 0.012 * math.sin(TAU * vib * seconds(i)) + 0.02 * wobble[i])
            pulse = one_pole_lowpass(sawtooth(pitch, n), 3000.0)
            breath = noise(rng, n)
            amp = envelope([(0.0, 0.0), (0.05, 0.7), (0.25, 1.0), (length - 0.3, 0.85), (length, 0.0)], n)
            voice = [(-pulse[i] + 0.12 * breath[i]) * amp[i] for i in range(n)]
            mix_into(group, voice, start, rng.uniform(0.6, 1.0))
        onset = lambda t, a, b: b + (a - b) * math.exp(-t / 0.08)
        formants = [
            (lambda t: onset(t, 520.0, 760.0) * scale, 5.0, 1.0),
            (lambda t: onset(t, 950.0, 1250.0) * scale, 11.0, 0.75),
            (lambda t: 2600.0 * scale, 14.0, 0.4),
            (lambda t: 3400.0 * scale, 16.0, 0.2),
        ]
        for freq, q, gain in formants:
            shaped = biquad(group, "bp", freq, q)
            for i, v in enumerate(shaped):
                total[i] += v * gain
    return reverb(total, wet=0.25, room=0.8, tail=0.3)


def drums_of_war(rng):
    # BOOM ... BOOM-BOOM ... BOOM, the last one the heaviest.
    out = [0.0] * samples(2.4)
    for start, f_hi, f_lo, gain in ((0.0, 105.0, 50.0, 0.9), (0.62, 100.0, 48.0, 0.8),
                                    (0.9, 120.0, 58.0, 0.6), (1.42, 95.0, 44.0, 1.0)):
        hit = membrane(rng, f_hi, f_lo, 2.4 - start, decay=0.5, weight=gain)
        mix_into(out, hit, start, gain)
    return reverb(out, wet=0.22, room=0.86, damp=0.5, tail=0.1)


# Name, maker, seed, length in seconds.
SOUNDS = [
    ("horn-of-gondor", horn_of_gondor, 1, 2.4),
    ("horns-of-vengeance", horns_of_vengeance, 2, 2.4),
    ("clash-of-swords", clash_of_swords, 3, 2.0),
    ("drawn-steel", drawn_steel, 4, 2.0),
    ("arrow-volley", arrow_volley, 5, 2.0),
    ("war-cry", war_cry, 6, 2.0),
    ("drums-of-war", drums_of_war, 7, 2.4),
]


def finish(sig, length):
    """Cut to length with short fades against clicks, and a peak of -1 dBFS."""
    sig = (sig + [0.0] * samples(length))[: samples(length)]
    n = len(sig)
    fade_in, fade_out = samples(0.002), samples(0.15)
    for i in range(min(fade_in, n)):
        sig[i] *= i / fade_in
    for i in range(min(fade_out, n)):
        sig[n - 1 - i] *= i / fade_out
    peak = max(abs(v) for v in sig) or 1.0
    gain = 10 ** (-1.0 / 20) / peak
    return [v * gain for v in sig]


def write_wav(path, sig):
    frames = b"".join(struct.pack("<h", max(-32767, min(32767, int(round(v * 32767))))) for v in sig)
    tmp = path + ".tmp"
    with wave.open(tmp, "wb") as w:
        w.setnchannels(1)
        w.setsampwidth(2)
        w.setframerate(RATE)
        w.writeframes(frames)
    os.replace(tmp, path)


def main(argv):
    if len(argv) != 2:
        sys.stderr.write("usage: generate_sounds.py OUTPUT_DIR\n")
        return 2
    out_dir = argv[1]
    os.makedirs(out_dir, exist_ok=True)
    for name, make, seed, length in SOUNDS:
        write_wav(os.path.join(out_dir, name + ".wav"), finish(make(random.Random(seed)), length))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
