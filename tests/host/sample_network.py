"""The cities and links of the sample network, written down again from the map: what the sample is held against."""

import heapq
import sys

HERE = "den"
CITIES = dict(sea=1, snv=2, lax=3, den=4, ksc=5, hou=6, chi=7, ipl=8, atl=9, was=10, nyc=11)
# Number: first end, second end, IGP metric, MTU.
LINKS = {
    1: ("sea", "snv", 861, 9000), 2: ("sea", "den", 2095, 9000), 3: ("snv", "lax", 366, 9000),
    4: ("snv", "den", 1295, 1500), 5: ("lax", "hou", 1893, 9000), 6: ("den", "ksc", 639, 9000),
    7: ("ksc", "hou", 902, 1500), 8: ("ksc", "ipl", 548, 9000), 9: ("hou", "atl", 1176, 9000),
    10: ("ipl", "chi", 260, 9000), 11: ("chi", "nyc", 700, 9000), 12: ("ipl", "atl", 587, 9000),
    13: ("atl", "was", 846, 9000), 14: ("was", "nyc", 233, 9000)}
INTERFACES = {"sea": "eth1", "snv": "eth2", "ksc": "eth10"}


def loopback(city):
    return "10.0.0.%d" % CITIES[city]


def ingress_addresses():
    """Address: (link, router that owns it, router at the other end)."""
    owners = {}
    for number, (first, second, _, _) in LINKS.items():
        for form in ("10.1.%d.%d", "2001:db8:1:%d::%d"):
            owners[form % (number, 1)] = (number, first, second)
            owners[form % (number, 2)] = (number, second, first)
    return owners


INGRESS = ingress_addresses()
LOOPBACKS = {form % n: city for city, n in CITIES.items() for form in ("10.0.0.%d", "2001:db8::%d")}


def igp_metrics():
    metrics, queue = {HERE: 0}, [(0, HERE)]
    while queue:
        metric, city = heapq.heappop(queue)
        for first, second, cost, _ in LINKS.values():
            for near, far in ((first, second), (second, first)):
                if near == city and metric + cost < metrics.get(far, sys.maxsize):
                    metrics[far] = metric + cost
                    heapq.heappush(queue, (metric + cost, far))
    return metrics
