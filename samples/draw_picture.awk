# Draws the sample photo, a lake below mountains in the evening, as a text PPM on standard output.
# Deterministic: the grain comes from a generator of its own, not from rand().

function noise() {
    seed = (seed * 16807) % 2147483647
    return seed / 2147483647 - 0.5
}

function clamp(value) {
    return value < 0 ? 0 : (value > 255 ? 255 : int(value))
}

# The height above the water, in pixels, of a ridge of hills at column x.
function ridge(x, base, wave, phase) {
    return base + wave * (sin(x / 71 + phase) + 0.5 * sin(x / 29 + 2 * phase) + 0.2 * sin(x / 9))
}

# Sets r, g and b to the colour of a point above the water.
function look(x, height,    haze, away) {
    if (height < ridge(x, 40, 14, 1.7)) {
        haze = height / 90
        r = 24 + 40 * haze; g = 38 + 40 * haze; b = 34 + 50 * haze
    } else if (height < ridge(x, 95, 30, 0.4)) {
        haze = height / 150
        r = 62 + 60 * haze; g = 66 + 48 * haze; b = 92 + 44 * haze
    } else {
        haze = height / horizon
        r = 250 - 150 * haze; g = 178 - 50 * haze; b = 118 + 60 * haze
        away = sqrt((x - 455) ^ 2 + (height - 160) ^ 2)
        if (away < 22) {
            r = 255; g = 244; b = 214
        } else {
            r += 900 / away; g += 700 / away; b += 260 / away
        }
    }
}

BEGIN {
    width = 640; height = 427; horizon = 290; seed = 20261121
    printf "P3\n%d %d\n255\n", width, height
    for (y = 0; y < height; ++y) {
        for (x = 0; x < width; ++x) {
            if (y < horizon) {
                look(x, horizon - y)
            } else {
                depth = y - horizon
                ripple = 5 * sin(depth / 2.3 + sin(x / 40)) * (1 + depth / 60)
                look(x + ripple, depth * 1.6 + 2)
                r = r * 0.68 + 8; g = g * 0.72 + 14; b = b * 0.80 + 26
            }
            grain = 9 * noise()
            printf "%d %d %d\n", clamp(r + grain), clamp(g + grain), clamp(b + grain)
        }
    }
}
