#!/usr/bin/env python3
"""Draws the palette pictures: 20 x 20 pixels of 4 bits, one for each component, named by its class in capitals.

Run it in this folder after a change; the pictures are kept with the sources, so a build does not need it.
"""
import math
import struct
import zlib

COLOURS = {  # sixteen; the first is transparent
    '.': (255, 255, 255), 'k': (0, 0, 0), 'w': (255, 255, 255), 'g': (128, 128, 128), 's': (200, 200, 200),
    'r': (220, 30, 30), 'd': (130, 10, 10), 'y': (255, 215, 0), 'o': (240, 140, 20), 'l': (120, 200, 90),
    'e': (30, 120, 40), 'c': (110, 190, 240), 'b': (40, 100, 210), 'n': (15, 40, 120), 'm': (190, 90, 200),
    'p': (100, 40, 130),
}
INDEX = {name: number for number, name in enumerate(COLOURS)}


class Picture:
    def __init__(self):
        self.rows = [['.'] * 20 for _ in range(20)]

    def dot(self, x, y, colour):
        x, y = math.floor(x), math.floor(y)
        if 0 <= x < 20 and 0 <= y < 20:
            self.rows[y][x] = colour

    def fill(self, inside, colour):
        for y in range(20):
            for x in range(20):
                if inside(x + 0.5, y + 0.5):
                    self.rows[y][x] = colour

    def disk(self, cx, cy, rx, ry, colour):
        self.fill(lambda x, y: ((x - cx) / rx) ** 2 + ((y - cy) / ry) ** 2 <= 1, colour)

    def area(self, points, colour):
        def inside(x, y):
            odd = False
            for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
                if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
                    odd = not odd
            return odd
        self.fill(inside, colour)

    def line(self, x1, y1, x2, y2, colour):
        steps = max(abs(x2 - x1), abs(y2 - y1), 1)
        for step in range(steps + 1):
            self.dot(x1 + (x2 - x1) * step / steps + 0.5, y1 + (y2 - y1) * step / steps + 0.5, colour)

    def outline(self, points, colour):
        for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
            self.line(x1, y1, x2, y2, colour)

    def frame(self, x1, y1, x2, y2, colour):
        self.outline([(x1, y1), (x2, y1), (x2, y2), (x1, y2)], colour)

    def ring(self, cx, cy, r, colour):
        """A circle of one pixel's width around what is filled so far."""
        for step in range(200):
            angle = step * math.pi / 100
            self.dot(cx + r * math.cos(angle), cy + r * math.sin(angle), colour)

    def box(self, x, y, size, depth, light, middle, dark):
        """A cube seen from the upper right, its front's upper left corner at (x, y)."""
        self.area([(x, y), (x + depth, y - depth), (x + size + depth, y - depth), (x + size, y)], light)
        self.area([(x + size, y), (x + size + depth, y - depth), (x + size + depth, y + size - depth),
                   (x + size, y + size)], dark)
        self.area([(x, y), (x + size, y), (x + size, y + size), (x, y + size)], middle)
        self.frame(x, y, x + size, y + size, 'k')
        self.line(x, y, x + depth, y - depth, 'k')
        self.line(x + size, y, x + size + depth, y - depth, 'k')
        self.line(x + size, y + size, x + size + depth, y + size - depth, 'k')
        self.line(x + depth, y - depth, x + size + depth, y - depth, 'k')
        self.line(x + size + depth, y - depth, x + size + depth, y + size - depth, 'k')

    def arrow(self):
        """The sign of what shows something else once more: a bent arrow in the lower left corner."""
        self.fill(lambda x, y: x < 9 and y > 11, 'w')
        self.frame(0, 11, 8, 19, 'k')
        for x, y in [(2, 17), (2, 16), (2, 15), (3, 14), (4, 14), (5, 14), (4, 13), (4, 15), (6, 14), (5, 13), (5, 15),
                     (4, 12), (4, 16)]:
            self.dot(x, y, 'b')

    def clock(self, cx, cy, r):
        self.disk(cx, cy, r, r, 'w')
        self.ring(cx, cy, r, 'k')
        self.line(int(cx), int(cy), int(cx), int(cy - r + 2), 'r')
        self.line(int(cx), int(cy), int(cx + r - 3), int(cy), 'n')

    def save(self, name):
        bits = b''
        for row in self.rows:
            numbers = [INDEX[c] for c in row]
            bits += b'\0' + bytes(numbers[x] << 4 | numbers[x + 1] for x in range(0, 20, 2))
        def chunk(kind, data):
            return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))
        with open(name + '.png', 'wb') as file:
            file.write(b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', 20, 20, 4, 3, 0, 0, 0)) +
                       chunk(b'PLTE', b''.join(bytes(c) for c in COLOURS.values())) + chunk(b'tRNS', b'\0') +
                       chunk(b'IDAT', zlib.compress(bits, 9)) + chunk(b'IEND', b''))


def shape():
    p = Picture()  # a pencil that draws a curve
    for x in range(1, 13):
        p.dot(x, 15 + 2.5 * math.sin(x / 1.9), 'r')
        p.dot(x, 16 + 2.5 * math.sin(x / 1.9), 'r')
    p.area([(10, 11), (16, 2), (19, 4), (13, 13)], 'y')
    p.area([(10, 11), (13, 13), (9, 15)], 's')
    p.outline([(10, 11), (16, 2), (19, 4), (13, 13)], 'k')
    p.line(9, 15, 10, 11, 'k')
    p.line(9, 15, 13, 13, 'k')
    p.line(15, 4, 18, 6, 'd')
    return p


def box():
    p = Picture()
    p.box(2, 7, 11, 5, 'c', 'b', 'n')
    return p


def ball(p, cx, cy, r, light, middle, dark):
    p.disk(cx, cy, r, r, dark)
    p.disk(cx - r * 0.15, cy - r * 0.15, r * 0.8, r * 0.8, middle)
    p.disk(cx - r * 0.3, cy - r * 0.35, r * 0.38, r * 0.38, light)
    p.ring(cx, cy, r, 'k')


def sphere():
    p = Picture()
    ball(p, 10, 10, 8.5, 'w', 'r', 'd')
    return p


def plane():
    p = Picture()
    corners = [(1, 13), (8, 5), (18, 7), (12, 16)]
    p.area(corners, 'l')
    p.outline(corners, 'e')
    p.line(4, 9, 15, 12, 'e')
    p.line(13, 6, 6, 14, 'e')
    for x, y in corners:
        p.fill(lambda a, b, x=x, y=y: abs(a - x - 0.5) <= 1 and abs(b - y - 0.5) <= 1, 'k')
    return p


def cylinder():
    p = Picture()
    p.fill(lambda x, y: 4 <= x <= 16 and 4.5 <= y <= 15.5, 'o')
    p.disk(10, 15.5, 6, 3, 'o')
    p.fill(lambda x, y: 12.5 <= x <= 16 and 4.5 <= y <= 15.5 + 3 * math.sqrt(max(0, 1 - ((x - 10) / 6) ** 2)), 'd')
    p.fill(lambda x, y: 5 <= x <= 7 and 4.5 <= y <= 16.5, 'y')
    p.disk(10, 4.5, 6, 3, 'y')
    for step in range(200):
        a = step * math.pi / 100
        p.dot(10 + 6 * math.cos(a), 4.5 + 3 * math.sin(a), 'k')
        if math.sin(a) > 0:
            p.dot(10 + 6 * math.cos(a), 15.5 + 3 * math.sin(a), 'k')
    p.line(4, 5, 4, 15, 'k')
    p.line(16, 5, 16, 15, 'k')
    return p


def refshape():
    p = Picture()
    p.box(5, 7, 9, 5, 's', 'g', 'k')
    p.box(5, 7, 9, 5, 'c', 'b', 'n')
    p.arrow()
    return p


def canvas():
    p = Picture()  # an easel with a picture
    p.line(5, 13, 2, 19, 'd')
    p.line(14, 13, 17, 19, 'd')
    p.line(9, 13, 9, 18, 'd')
    p.line(10, 13, 10, 18, 'd')
    p.fill(lambda x, y: 1 < x < 19 and 1 < y < 14, 'w')
    p.frame(1, 1, 18, 14, 'o')
    p.frame(2, 2, 17, 13, 'd')
    p.fill(lambda x, y: 3 <= x < 17 and 3 <= y < 13, 'c')
    p.area([(3, 13), (8, 6), (12, 13)], 'e')
    p.area([(8, 13), (13, 8), (17, 13)], 'l')
    p.disk(14, 5.5, 1.6, 1.6, 'y')
    return p


def control():
    p = Picture()  # a window with a cube in it
    p.fill(lambda x, y: 1 <= x < 19 and 2 <= y < 19, 'w')
    p.fill(lambda x, y: 1 <= x < 19 and 2 <= y < 6, 'b')
    p.frame(0, 1, 19, 18, 'k')
    p.line(1, 6, 18, 6, 'k')
    for x in (12, 14, 16):
        p.dot(x, 3, 'w')
        p.dot(x, 4, 'w')
    p.box(6, 11, 5, 3, 'y', 'o', 'd')
    return p


def scene(p=None):
    p = p or Picture()  # solids on a ground
    p.area([(0, 15), (5, 10), (20, 10), (16, 18), (3, 19)], 'l')
    p.box(9, 8, 6, 3, 'c', 'b', 'n')
    ball(p, 6, 13, 3.6, 'w', 'r', 'd')
    return p


def refscene():
    p = scene()
    p.arrow()
    return p


def light():
    p = Picture()
    for step in range(8):
        a = step * math.pi / 4
        if abs(step - 2) < 1:
            continue
        p.line(round(9.5 + 7 * math.cos(a)), round(8.5 + 7 * math.sin(a)), round(9.5 + 9 * math.cos(a)),
               round(8.5 + 9 * math.sin(a)), 'o')
    p.disk(10, 8.5, 5, 5, 'y')
    p.disk(8.5, 7, 1.8, 1.8, 'w')
    p.ring(10, 8.5, 5, 'k')
    p.fill(lambda x, y: 8 <= x <= 12 and 13 <= y <= 18, 's')
    p.frame(7, 13, 12, 18, 'k')
    p.line(8, 15, 11, 15, 'g')
    return p


def way():
    p = Picture()
    points = [(2, 16), (6, 7), (12, 13), (17, 3)]
    for (x1, y1), (x2, y2) in zip(points, points[1:]):
        p.line(x1, y1, x2, y2, 'b')
        p.line(x1 + 1, y1, x2 + 1, y2, 'b')
    for x, y in points[:-1]:
        p.disk(x + 0.5, y + 0.5, 2, 2, 'y')
        p.ring(x + 0.5, y + 0.5, 2, 'k')
    p.area([(18, 0), (19, 8), (12, 4)], 'r')
    p.outline([(18, 0), (19, 8), (12, 4)], 'd')
    return p


def nav():
    p = Picture()  # a cube, and arrows around it
    p.box(6, 8, 6, 3, 'w', 's', 'g')
    for corners in ([(10, 0), (7, 3), (13, 3)], [(10, 19), (7, 16), (13, 16)], [(0, 10), (3, 7), (3, 13)],
                    [(19, 10), (17, 7), (17, 13)]):
        p.area(corners, 'r')
        p.outline(corners, 'd')
    return p


def sequencer():
    p = Picture()  # a clock, and beats of different lengths
    p.clock(8, 7.5, 6.5)
    for x, height, colour in ((1, 3, 'e'), (5, 5, 'l'), (9, 2, 'e'), (13, 5, 'l'), (17, 3, 'e')):
        p.fill(lambda a, b, x=x, h=height: x <= a < x + 2 and 19 - h < b < 19, colour)
    p.line(0, 19, 19, 19, 'k')
    return p


def timer():
    p = Picture()
    p.fill(lambda x, y: 8 <= x <= 12 and y <= 2, 'g')
    p.line(15, 3, 17, 5, 'k')
    p.clock(10, 11, 8)
    for x, y in ((10, 4), (17, 11), (10, 18), (3, 11)):
        p.dot(x, y, 'k')
    return p


for picture in (shape, box, sphere, plane, cylinder, refshape, canvas, control, scene, refscene, light, way, nav,
                sequencer, timer):
    picture().save('TZKOGL' + picture.__name__.upper())
