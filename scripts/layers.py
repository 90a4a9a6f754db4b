"""Boxes in rows, joined by arrows that lead downwards: in which order and where they stand.

An arrow crosses the rows between its ends in places of its own and bends between rows only, so that it crosses no
box. The same boxes and arrows come out the same each time.
"""
from itertools import permutations
from random import Random

SPACE = 26  # between neighbours in a row
TRIES = 40  # orders to start from


class Node:
    """A box, or, without a name, a place where an arrow crosses a row or ends."""

    def __init__(self, name, group, row, width=0.0):
        self.name, self.group, self.row, self.width = name, group, row, width
        self.up, self.down = [], []
        self.place = 0  # in its row, from the left
        self.x = 0.0  # of its middle


def join(source, target):
    """Joins two nodes by an arrow. @return the places in the rows between them"""
    places = [Node(None, target.group, row) for row in range(source.row + 1, target.row)]
    nodes = [source, *places, target]
    for upper, lower in zip(nodes, nodes[1:]):
        upper.down.append(lower)
        lower.up.append(upper)
    return places


def arrange(nodes, beside):
    """Gives each node its x.

    @param beside  groups that stand to the right of another one: {group: the other}
    """
    rows = [[node for node in nodes if node.row == row] for row in range(1 + max(node.row for node in nodes))]
    rows = in_order(rows, beside)
    for row in rows:
        place_row(row, [0.0] * len(row))
    for sweep in range(80):
        for row in rows if sweep % 2 else rows[::-1]:
            place_row(row, [wish(node) for node in row])
        part(nodes, beside)


def in_order(rows, beside):
    """The rows with the least disorder that is found from several orders to start from."""
    tries = []
    for seed in range(TRIES):
        random = Random(seed)
        order = [sorted(row, key=lambda node: (node.group in beside, seed and random.random())) for row in rows]
        tries.append((improve(order, beside), order))
    return min(tries, key=lambda one: one[0])[1]


def improve(rows, beside):
    """Moves nodes within their row for as long as that makes less disorder. @return what is left of it"""
    best, better = disorder(rows), True
    while better:
        better = False
        for row, (i, j) in ((row, pair) for row in rows for pair in permutations(range(len(row)), 2)):
            before = list(row)
            row.insert(j, row.pop(i))
            row.sort(key=lambda node: node.group in beside)
            now = disorder(rows)
            if now < best:
                best, better = now, True
            else:
                row[:] = before
    return best


def disorder(rows):
    """How many arrows cross, then how slanting they are."""
    for row in rows:
        for place, node in enumerate(row):
            node.place = place
    slant = sum(abs((node.place + 0.5) / len(row) - (below.place + 0.5) / len(rows[below.row]))
                for row in rows for node in row for below in node.down)
    return sum(map(crossings, rows)), round(slant, 9)


def crossings(row):
    ends = [(node.place, below.place) for node in row for below in node.down]
    return sum(a < c and b > d for a, b in ends for c, d in ends)


def wish(node):
    """Where a node would like to be: near those it is joined to, and above all with its arrow straight."""
    near = [other.x for other in node.up + node.down for _ in range(1 if node.name or other.name else 8)]
    return sum(near) / len(near) if near else node.x


def place_row(row, wishes):
    """Puts the nodes of a row nearest to their wishes (least squares) with SPACE between them."""
    blocks, offset = [], 0.0  # of nodes that touch: the sum of what they wish, and each node with its offset
    for i, node in enumerate(row):
        if i:
            offset += (row[i - 1].width + node.width) / 2 + SPACE
        blocks.append([wishes[i] - offset, [(node, offset)]])
        while len(blocks) > 1 and blocks[-2][0] / len(blocks[-2][1]) > blocks[-1][0] / len(blocks[-1][1]):
            total, nodes = blocks.pop()
            blocks[-1][0] += total
            blocks[-1][1] += nodes
    for total, nodes in blocks:
        for node, offset in nodes:
            node.x = total / len(nodes) + offset


def part(nodes, beside):
    """Moves each group that stands beside another to the right of all of it."""
    for right, left in beside.items():
        moved = [node for node in nodes if node.group == right]
        edge = max((node.x + node.width / 2 for node in nodes if node.group == left), default=0.0) + 3 * SPACE
        begin = min((node.x - node.width / 2 for node in moved), default=edge)
        for node in moved:
            node.x += max(0.0, edge - begin)
