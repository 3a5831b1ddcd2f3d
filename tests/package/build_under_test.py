"""Where the build under test is, and a small example of the tree to try the tool with."""
import os
import pathlib

SOURCE = pathlib.Path(os.environ["VORNRUN_SOURCE"])
BUILD = pathlib.Path(os.environ["VORNRUN_BUILD"])
TOOL = os.environ["VORNRUN_TOOL"]
CMAKE = os.environ["VORNRUN_CMAKE"]
VERSION = os.environ["VORNRUN_VERSION"]


def smallest_example(examples):
    """The model and a property file of the example that is read soonest."""
    model = min(examples.glob("*/model.xml"), key=lambda path: path.stat().st_size)
    properties = sorted(path for path in model.parent.glob("*.xml") if path != model)
    return model, next((path for path in properties if path.name == "properties.xml"), properties[0])
