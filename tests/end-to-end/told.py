"""What a screen reader is told of changed texts, as it happens: a line each with the control's kind and the text."""
import pyatspi


def tell(event) -> None:
    print(event.source.getRoleName(), event.any_data, sep="\t", flush=True)


pyatspi.Registry.registerEventListener(tell, "object:text-changed")
print("listening", flush=True)
pyatspi.Registry.start()
